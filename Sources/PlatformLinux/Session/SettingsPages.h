// The programs that show a page of the system's settings on this desktop. Pure; any thread.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace orvane {

struct SettingsCommand {
    QString program;
    QStringList arguments;

    friend bool operator==(const SettingsCommand&, const SettingsCommand&) = default;
};

bool isSettingsURL(const QString& url);

/// Returns the commands to try, the best first: those of the session's desktops, then those that run on any.
/// For each program the page itself comes before the front page of the settings. Empty for an unknown page.
QList<SettingsCommand> settingsCommands(const QString& url, const QStringList& currentDesktops);

} // namespace orvane
