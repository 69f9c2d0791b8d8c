// The shortcuts that the desktop keeps for itself, as keys of the present layout. Reading begins with the
// first window of the program that becomes active, for only from there can somebody ask, or with the first
// question. Main thread.
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
        int virtualKeyCode = 0;
        /// Carbon bits.
        int modifiers = 0;
        friend bool operator==(const Shortcut&, const Shortcut&) = default;
    };

    /// `desktops`: the names in XDG_CURRENT_DESKTOP.
    explicit DesktopShortcuts(ServerKeymap& keymap, const QStringList& desktops = desktopsOfSession());
    ~DesktopShortcuts() override;
    static QStringList desktopsOfSession();

    /// As far as they are known; never waits for another program.
    QList<Shortcut> shortcuts();

Q_SIGNALS:
    /// A desktop has answered, at first or anew.
    void changed();

private:
    void start();

    ServerKeymap& m_keymap;
    std::unique_ptr<SessionBusLink> m_link;
    std::vector<std::unique_ptr<ShortcutSource>> m_sources;
};

} // namespace orvane
