// One hold of the keyboard and the pointer: tries for them until they are there or the time is over. Main
// thread.
#pragma once

#include "Platform/Overlays.h"
#include "PlatformLinux/Overlays/InputGrabs.h"

#include <QTimer>

namespace orvane {

class X11InputHold : public InputHold {
public:
    /// The grabs are null where there are none to be had.
    X11InputHold(std::shared_ptr<InputGrabs> grabs, std::function<void()> letKeyboardGo,
                 std::function<void(bool)> answer);
    ~X11InputHold() override;
    X11InputHold(const X11InputHold&) = delete;
    X11InputHold& operator=(const X11InputHold&) = delete;

    void deliverTo(QWindow& window) override;

    /// Expires with this object, or when the answer is no.
    [[nodiscard]] std::weak_ptr<const void> life() const { return m_life; }

private:
    void ask();
    void look();
    void tell(bool isHeld);

    std::shared_ptr<InputGrabs> m_grabs;
    std::function<void()> m_letKeyboardGo;
    std::function<void(bool)> m_answer;
    bool m_isHeld = false;
    std::shared_ptr<const char> m_life = std::make_shared<const char>();
    std::chrono::steady_clock::time_point m_deadline;
    QTimer m_timer;
};

} // namespace orvane
