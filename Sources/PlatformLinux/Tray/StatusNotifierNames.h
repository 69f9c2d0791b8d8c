// The names by which StatusNotifierItem hosts and items find each other.
#pragma once

#include <QString>

namespace orvane::sni {

inline const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
inline const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
inline const QString watcherInterface = QStringLiteral("org.kde.StatusNotifierWatcher");
inline const QString itemPath = QStringLiteral("/StatusNotifierItem");
inline const QString menuPath = QStringLiteral("/MenuBar");

} // namespace orvane::sni
