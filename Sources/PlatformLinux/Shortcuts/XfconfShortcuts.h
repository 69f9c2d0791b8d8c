// The shortcuts of Xfce, those of its commands and those of its window manager, from the settings daemon.
// Main thread.
#pragma once

#include "PlatformLinux/Shortcuts/ShortcutSource.h"

#include <QDBusConnection>
#include <QTimer>

#include <optional>

namespace orvane {

class XfconfShortcuts : public ShortcutSource {
    Q_OBJECT
public:
    XfconfShortcuts();
    void start(QDBusConnection* bus) override;

private Q_SLOTS:
    void noticeChange(const QString& channel);

private:
    void read();

    std::optional<QDBusConnection> m_bus;
    /// One action of the user changes several properties.
    QTimer m_changesEnd;
};

} // namespace orvane
