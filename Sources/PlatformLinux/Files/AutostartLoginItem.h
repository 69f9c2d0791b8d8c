// The login item as the session's autostart entry, "autostart/<identifier>.desktop" in the config home.
//
// enabled: the entry is there and the session of this desktop will start its program. requiresApproval: it is
// there but switched off, as session settings do it. notFound: its program is gone, or the file is no entry.
#pragma once

#include "Platform/LoginItem.h"
#include "PlatformLinux/Common/XdgDirectories.h"

#include <QString>
#include <QStringList>

namespace orvane {

class AutostartLoginItem : public LoginItem {
public:
    /// Uses the user, the executable and the desktop of this process.
    AutostartLoginItem();
    /// `executable` is the program to start. `desktops` are the names of the running desktop
    /// ($XDG_CURRENT_DESKTOP); with none of them, restrictions to desktops are not judged.
    AutostartLoginItem(const XdgDirectories& directories, QString executable, QStringList desktops);

    [[nodiscard]] Status status() const override;
    /// Writes the entry anew, whatever it holds; an entry that was switched off is on again.
    void registerItem() override;
    /// Brings an entry that an earlier version wrote for this executable up to date, and leaves all others
    /// alone. A failure changes nothing. Any thread.
    void renew();
    /// Removes the entry; it is no failure if there is none.
    void unregisterItem() override;

    /// The argument by which a started process knows that the session started it.
    static QString startArgument() { return QStringLiteral("--at-login"); }
    /// The desktops that $XDG_CURRENT_DESKTOP names.
    static QStringList currentDesktops();

private:
    /// `arguments` follow the program in its command.
    void write();
    [[nodiscard]] QByteArray entry(const QString& arguments) const;
    void throwIfHomeless() const;

    QString m_path; // empty without a config home
    QString m_executable;
    QStringList m_desktops;
};

} // namespace orvane
