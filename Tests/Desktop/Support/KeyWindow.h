// A window that gets the keys.
#pragma once

#include <QByteArray>
#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>

namespace orvane::tests {

/// Has the input focus and remembers each key: "+54" for a press, "-54" for a release, with "/" and the
/// modifiers that X says are in force.
class KeyWindow {
public:
    KeyWindow();
    ~KeyWindow();
    KeyWindow(const KeyWindow&) = delete;
    KeyWindow& operator=(const KeyWindow&) = delete;

    QStringList keys();
    /// What its presses and repeats would write.
    QByteArray typed();
    /// Waits without an event loop: a main thread that hangs.
    bool waitFor(std::chrono::milliseconds limit, const std::function<bool()>& condition);

private:
    struct State;
    void read();

    std::unique_ptr<State> m_state;
};

} // namespace orvane::tests
