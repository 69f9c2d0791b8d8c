// One desktop's shortcut settings. Main thread; no operation waits.
#pragma once

#include "PlatformLinux/Shortcuts/Accelerator.h"

#include <QObject>

class QDBusConnection;

namespace orvane {

class ShortcutSource : public QObject {
    Q_OBJECT
public:
    /// Begins to read, and to follow the changes. Called once, with the session bus or with null where there
    /// is none.
    virtual void start(QDBusConnection* bus) = 0;

    /// Those that are known so far.
    [[nodiscard]] const QList<Accelerator>& accelerators() const { return m_accelerators; }

Q_SIGNALS:
    void changed();

protected:
    void set(QList<Accelerator> accelerators)
    {
        m_accelerators = std::move(accelerators);
        Q_EMIT changed();
    }

private:
    QList<Accelerator> m_accelerators;
};

} // namespace orvane
