// orvane-guardian WINDOW: waits for the end of the program at the other end of standard input. If that ends
// without a goodbye, the keys that it had pressed on the XTEST keyboard are released, which would otherwise
// stay down for ever. If it stands still while keys are typed, the keyboards are taken from it as well. Ends
// with the X server too.
#include "PlatformLinux/EventTap/AccessKeys.h"
#include "PlatformLinux/EventTap/LiftedKeys.h"
#include "PlatformLinux/Guardian/KeyWatch.h"
#include "PlatformLinux/Guardian/OwnScope.h"
#include "PlatformLinux/X11/InputConnection.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <utility>

#include <poll.h>
#include <unistd.h>

namespace {

using orvane::InputConnection;
using orvane::KeySet;
using orvane::KeyWatch;

/// The server may not answer for a while; nothing waits for this process.
constexpr std::chrono::seconds longestWait(60);

enum class Farewell { goodbye, death, standstill, serverLost };

class Guardian {
public:
    Guardian(InputConnection& connection, xcb_window_t window, orvane::SharedPulse pulse, pid_t program)
        : m_connection(connection), m_window(window), m_keys(connection, std::move(pulse), program)
    {
        const std::uint32_t interest = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection.link().xcb(), window, XCB_CW_EVENT_MASK, &interest);
        connection.link().flush();
    }

    void run()
    {
        switch (waitForFarewell()) {
        case Farewell::goodbye:
        case Farewell::serverLost:
            return;
        case Farewell::standstill:
            // The end of its connection frees the keyboards, in the server and at once.
            m_keys.setFreed();
            xcb_kill_client(m_connection.link().xcb(), m_window);
            break;
        case Farewell::death:
            break;
        }
        waitForLastKeys();
        letKeysGo();
        restoreAccessKeys();
        restoreHeldModifiers();
        m_connection.synchronize();
    }

private:
    Farewell waitForFarewell()
    {
        for (;;) {
            // A goodbye may come after the window's end: only the pipe shows whether there is one.
            handleEvents();
            pollfd waits[] = {{STDIN_FILENO, POLLIN, 0}, {m_connection.link().descriptor(), POLLIN, 0}};
            if (::poll(waits, 2, m_keys.timeout()) < 0 && errno != EINTR)
                return Farewell::death;
            if (waits[0].revents != 0) {
                char letter = 0;
                return ::read(STDIN_FILENO, &letter, 1) == 1 ? Farewell::goodbye : Farewell::death;
            }
            if (m_connection.link().isLost())
                return Farewell::serverLost;
            if (m_keys.look() == KeyWatch::Finding::stuck)
                return Farewell::standstill;
        }
    }

    /// The dead client's last keys may still lie in the server's queue: they have been handled when its
    /// window is gone.
    void waitForLastKeys()
    {
        orvane::XExchange exchange(m_connection.link(), orvane::within(longestWait));
        const auto tree =
            exchange.reply<xcb_query_tree_reply_t>(xcb_query_tree(m_connection.link().xcb(), m_window));
        if (!tree)
            return;
        for (;;) {
            handleEvents();
            if (m_windowIsGone || m_connection.link().isLost())
                return;
            pollfd wait{m_connection.link().descriptor(), POLLIN, 0};
            ::poll(&wait, 1, -1);
        }
    }

    void handleEvents()
    {
        while (const auto event = m_connection.link().nextEvent()) {
            const auto* destroyed = reinterpret_cast<const xcb_destroy_notify_event_t*>(event.get());
            if ((event->response_type & 0x7F) == XCB_DESTROY_NOTIFY && destroyed->window == m_window)
                m_windowIsGone = true;
            m_keys.take(*event);
        }
    }

    void letKeysGo()
    {
        // The applications' own keys are released too: a key that was down when the keyboards were taken is
        // down for them without XTEST, and comes up on a keyboard that isn't theirs. A key that the user
        // holds on a keyboard of theirs stays.
        const orvane::Keyboards present = m_connection.keyboards();
        const KeySet down = m_connection.keysDown(present.xtest) | m_connection.keysDown(present.master);
        const KeySet modifiers = m_connection.modifierRoles().chordKeys();
        // Modifiers come last, so that no letter is typed with fewer of them than it had.
        for (const KeySet& keys : {down & ~modifiers, down & modifiers})
            forEach(keys, [this](std::uint8_t key) { m_connection.release(key); });
    }

    /// The grabbed keyboards had none, and modifiers may be locked in the place of keys.
    void restoreAccessKeys()
    {
        constexpr std::uint8_t locked =
            XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
        const orvane::Keyboards present = m_connection.keyboards();
        const auto access = orvane::AccessKeys::of(m_connection, present.xtest);
        if (access.filterPresses())
            xcb_xkb_latch_lock_state(m_connection.link().xcb(), XCB_XKB_ID_USE_CORE_KBD, locked, 0, 0, 0, 0,
                                     0, 0);
        for (const orvane::KeyboardDevice& keyboard : present.hardware)
            access.applyTo(m_connection, keyboard.id);
    }

    /// The applications have just seen the release of modifiers that the user still holds.
    void restoreHeldModifiers()
    {
        KeySet held;
        for (const orvane::KeyboardDevice& keyboard : m_connection.keyboards().hardware)
            held |= m_connection.keysDown(keyboard.id);
        orvane::LiftedKeys keys(m_connection);
        forEach(held & m_connection.modifierRoles().chordKeys(), [&](std::uint8_t key) {
            keys.lift(key);
            keys.putBack(key);
        });
    }

    template <typename Visit>
    static void forEach(const KeySet& keys, Visit visit)
    {
        for (unsigned key = 0; key < keys.size(); ++key) {
            if (keys.test(key))
                visit(static_cast<std::uint8_t>(key));
        }
    }

    InputConnection& m_connection;
    xcb_window_t m_window;
    KeyWatch m_keys;
    bool m_windowIsGone = false;
};

} // namespace

int main(int argc, char** argv)
{
    xcb_window_t window = 0;
    if (argc != 2 || std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), window).ec != std::errc())
        return 2;
    const pid_t program = ::getppid();
    // A signal that ends the program must not end its guardian first. The pipe and the server bound its life.
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM})
        std::signal(signal, SIG_IGN);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr); // the program has started us with all of them blocked

    // This comes first, before anything else could get that number.
    auto pulse = orvane::SharedPulse::ofDescriptor(orvane::SharedPulse::descriptorInGuardian);
    orvane::moveIntoOwnScope();
    const auto connection = InputConnection::open(orvane::within(longestWait)).connection;
    if (!connection)
        return 1;
    Guardian(*connection, window, std::move(pulse), program).run();
    return 0;
}
