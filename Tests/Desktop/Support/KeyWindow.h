// A window that gets the keys.
#pragma once

#include <QByteArray>
#include <QPoint>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>

namespace orvane::tests {

/// Has the input focus and records each key: "+54" for a press, "-54" for a release, "b1" for a click, with
/// "/" and the modifiers that X reports.
class KeyWindow {
public:
    KeyWindow();
    ~KeyWindow();
    KeyWindow(const KeyWindow&) = delete;
    KeyWindow& operator=(const KeyWindow&) = delete;

    QStringList keys();
    /// A place inside of it, in the root window.
    [[nodiscard]] static QPoint place() { return {500, 350}; }
    /// Returns what the presses and repeats would type.
    QByteArray typed();
    /// Waits without an event loop, as a main thread that hangs.
    bool waitFor(std::chrono::milliseconds limit, const std::function<bool()>& condition);

private:
    struct State;
    void read();

    std::unique_ptr<State> m_state;
};

} // namespace orvane::tests
