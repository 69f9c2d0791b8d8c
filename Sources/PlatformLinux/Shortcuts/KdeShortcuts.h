// The shortcuts of Plasma, from the file in which its daemon keeps them. Main thread.
#pragma once

#include "PlatformLinux/Shortcuts/ShortcutSource.h"

#include <QFileSystemWatcher>
#include <QTimer>

namespace orvane {

class KdeShortcuts : public ShortcutSource {
    Q_OBJECT
public:
    explicit KdeShortcuts(QString path);
    static QString standardPath();
    void start(QDBusConnection* bus) override;

private:
    void read();

    QString m_path;
    QFileSystemWatcher m_watcher;
    QTimer m_changesEnd;
};

} // namespace orvane
