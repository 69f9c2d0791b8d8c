// Hot keys on X11: registrations over grabbed keys, and the handlers that are called for them. With nothing
// registered there is neither a grab nor a connection. Main thread.
#pragma once

#include "Platform/HotKeys.h"
#include "PlatformLinux/X11/SessionKind.h"

namespace orvane {

class DesktopShortcuts;
class LogSink;

class X11HotKeys : public HotKeys {
public:
    X11HotKeys(LogSink& log, DesktopShortcuts& desktopShortcuts, SessionKind session = sessionKind());
    ~X11HotKeys() override;

    [[nodiscard]] QString limitation() const override;
    Registration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                     EventHotKeyID id) override;
    std::unique_ptr<EventHandler> installEventHandler(Handler handler) override;
    SymbolicHotKeys copySymbolicHotKeys() override;

    /// To be called when this program is about to press a combination for the program in front, which gets it
    /// even if it is a hot key.
    void giveWayTo(std::uint32_t keyCode, std::uint32_t modifiers);
    /// To be called when another part of this program is about to grab the keyboard, which this one has while
    /// a hot key is held. Releases are still told.
    void letGoOfKeyboard();

private:
    class HotKey;
    class InstalledHandler;
    struct State;

    /// Registrations and handlers may outlive the service.
    std::shared_ptr<State> m_state;
    DesktopShortcuts& m_desktopShortcuts;
    const SessionKind m_session;
};

} // namespace orvane
