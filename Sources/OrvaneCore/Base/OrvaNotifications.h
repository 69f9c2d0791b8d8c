// Notifications on the default centre.
#pragma once

#include <QString>

namespace orvane::OrvaNotifications {

/// Posted by code that wants the home window opened without knowing the shell.
inline const QString openHome = QStringLiteral("net.lindenrow.orvane.openHome");

} // namespace orvane::OrvaNotifications
