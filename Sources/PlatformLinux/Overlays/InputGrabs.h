// Grabs of the keyboard and the pointer on the toolkit's connection, so that the toolkit gets the events. The
// answers are looked for and never waited for. Main thread.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/ModifierRoles.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <QTimer>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace orvane {

class InputGrabs {
public:
    /// Null where the program doesn't run on an X server.
    [[nodiscard]] static std::shared_ptr<InputGrabs> make();
    ~InputGrabs();
    InputGrabs(const InputGrabs&) = delete;
    InputGrabs& operator=(const InputGrabs&) = delete;

    /// Asks for both devices, and for their events in a window; the root window is one that nobody reads. A
    /// client that has them may ask anew, and no event goes to another one in between.
    void ask(xcb_window_t window);
    void askForRoot() { ask(m_toolkit.root()); }

    enum class State { unanswered, granted, refused };
    [[nodiscard]] State look();
    /// The answers don't matter any more.
    void forget();

    void letGo();
    /// Lets go once the keys and buttons that are down now were released, so that no other program sees the
    /// end of what it hasn't seen the beginning of; after a second in any case.
    void letGoWhenReleased();

private:
    /// A question whose answer says if a device is grabbed.
    struct Question {
        unsigned sequence = 0;
        bool isAnswered = false;
        bool isGranted = false;
    };

    InputGrabs(const X11Connection& toolkit, std::shared_ptr<ApplicationLink> x);
    template <typename Reply>
    void lookFor(Question& question) const;
    void letGoIfReleased();
    [[nodiscard]] KeySet keysDown() const;

    X11Connection m_toolkit;
    std::shared_ptr<ApplicationLink> m_x;
    std::uint16_t m_pointer;
    Question m_keyboardQuestion;
    Question m_pointerQuestion;
    QTimer m_releases;
    KeySet m_awaited;
    std::chrono::steady_clock::time_point m_releaseDeadline;
};

} // namespace orvane
