// A service of the desktop on the session bus that prevents the actions of an idle session while the object
// lives. A service that starts later, or anew, is asked when it does. Main thread.
#pragma once

#include <QString>
#include <QVariant>

#include <memory>

class QDBusServiceWatcher;

namespace orvane {

class SessionInhibitor {
public:
    struct Service {
        QString name;
        QString path;
        QString interface;
        QString releaseMethod; // takes the number that "Inhibit" gave
    };

    /// `arguments` are those of the service's method "Inhibit".
    SessionInhibitor(Service service, QVariantList arguments);
    ~SessionInhibitor();
    SessionInhibitor(const SessionInhibitor&) = delete;
    SessionInhibitor& operator=(const SessionInhibitor&) = delete;

private:
    struct Hold;

    void ask();

    const Service m_service;
    const QVariantList m_arguments;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    std::shared_ptr<Hold> m_hold;
};

} // namespace orvane
