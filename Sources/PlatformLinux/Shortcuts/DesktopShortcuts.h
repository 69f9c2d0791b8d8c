// The shortcuts that the desktop keeps for itself, as keys of the present layout. They are read when a window
// of the program first becomes active, for only there can a user need them, or at the first question. Main
// thread.
#pragma once

#include "PlatformLinux/Shortcuts/ShortcutSource.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

namespace orvane {

class ServerKeymap;
class SessionBusLink;

class DesktopShortcuts : public QObject {
    Q_OBJECT
public:
    struct Shortcut {
        /// A virtual key code, or the one that events give a key without.
        int keyCode = 0;
        /// In Carbon bits.
        int modifiers = 0;
        friend bool operator==(const Shortcut&, const Shortcut&) = default;
    };

    /// `desktops` are the names in XDG_CURRENT_DESKTOP.
    explicit DesktopShortcuts(ServerKeymap& keymap, const QStringList& desktops = desktopsOfSession());
    ~DesktopShortcuts() override;
    static QStringList desktopsOfSession();

    /// Returns those that are known so far; never waits for another program.
    QList<Shortcut> shortcuts();

Q_SIGNALS:
    /// Emitted when a desktop has answered, for the first time or anew.
    void changed();

private:
    void start();

    ServerKeymap& m_keymap;
    std::unique_ptr<SessionBusLink> m_link;
    std::vector<std::unique_ptr<ShortcutSource>> m_sources;
};

} // namespace orvane
