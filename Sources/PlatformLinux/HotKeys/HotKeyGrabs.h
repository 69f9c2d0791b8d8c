// Passive grabs of keys on the root window, on a separate connection that exists while something is grabbed.
// Only the grabbed keys and changes of the keyboard wake it. Main thread.
#pragma once

#include "Platform/HotKeys.h"
#include "Platform/LogSink.h"
#include "PlatformLinux/Keys/ModifierMasks.h"
#include "PlatformLinux/X11/ModifierRoles.h"
#include "PlatformLinux/X11/XSelection.h"

#include <QObject>
#include <QTimer>

#include <compare>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>

#include <xcb/xcb.h>

class QSocketNotifier;

namespace orvane {

class InputConnection;
class XExchange;

struct KeyCombination {
    std::uint8_t xKey = 0;
    /// In Carbon bits.
    std::uint32_t modifiers = 0;
    // The check takes the 0 of the comparison for a pointer.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    friend auto operator<=>(const KeyCombination&, const KeyCombination&) = default;
};

class HotKeyGrabs {
public:
    struct Listener {
        /// Called once for each press, whatever the locks are and however long it lasts.
        std::function<void(const KeyCombination&)> pressed;
        /// Called once for each key that was pressed so, whatever modifiers are held when it is released.
        std::function<void(std::uint8_t xKey)> released;
    };

    HotKeyGrabs(LogSink& log, Listener listener);
    ~HotKeyGrabs();
    HotKeyGrabs(const HotKeyGrabs&) = delete;
    HotKeyGrabs& operator=(const HotKeyGrabs&) = delete;

    /// Counted: each success needs its remove(). A few round trips for the first of a combination.
    OSStatus add(const KeyCombination& combination);
    void remove(const KeyCombination& combination);
    /// To be called when this program is about to press it for the program in front: it isn't grabbed until
    /// its key was released. A round trip, and nothing if it isn't grabbed.
    void giveWayTo(const KeyCombination& combination);
    /// Ends the server's grab that began with a press, so that another client can have the keyboard.
    void letGoOfKeyboard();

private:
    enum class OnServer { absent, present };
    struct Grab {
        int users = 0;
        /// Absent after the keyboard's modifiers moved to where another program was first, while it gives
        /// way, and until a server that is late or lost is back.
        OnServer onServer = OnServer::absent;
    };

    enum class Opening { open, late, impossible };
    Opening open();
    void openAgain();
    void lose();
    void closeWhenUnused();
    OSStatus grab(const KeyCombination& combination);
    void ungrab(const KeyCombination& combination);
    std::optional<ModifierMasks> readMasks();
    void regrab();
    void grabWhatIsAbsent();

    void readEvents();
    void handle(const xcb_generic_event_t& event);
    void handlePress(std::uint8_t key, std::uint16_t state);
    void handleRelease(std::uint8_t key);
    void handleRawRelease(std::uint8_t key, std::uint32_t sequence);
    void releaseWhatIsUp();
    [[nodiscard]] XExchange exchange() const;
    KeySet keysDown();
    void watchReleases(bool watch);
    void watchReleasesAsNeeded();
    void takeBack(const std::function<bool(const KeyCombination&)>& which);

    LogSink& m_log;
    Listener m_listener;
    std::unique_ptr<InputConnection> m_connection;
    std::unique_ptr<QSocketNotifier> m_notifier;
    ModifierMasks m_masks;
    std::map<KeyCombination, Grab> m_grabs;
    /// Keys that are down: further presses of them are repeats.
    KeySet m_down;
    std::set<KeyCombination> m_givesWayTo;
    /// The request from which on the releases of the keys count.
    std::uint32_t m_givesWaySince = 0;
    /// For a key that was never pressed.
    QTimer m_givingWayEnd;
    XSelection m_releases;
    /// For a server that didn't answer, or that has ended the connection.
    QTimer m_openingAgain;
    QTimer m_keyboardSettled;
    /// The context of queued calls.
    QObject m_context;
};

} // namespace orvane
