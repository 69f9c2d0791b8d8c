// Knows if the session has a StatusNotifierItem host, and follows its coming and going. Main thread; never
// waits.
#pragma once

#include "PlatformLinux/Common/SessionBusLink.h"

#include <QDBusMessage>
#include <QTimer>

#include <chrono>
#include <memory>

class QDBusPendingCallWatcher;

namespace orvane {

class StatusNotifierHostWatch : public QObject {
    Q_OBJECT
public:
    enum class State { asking, absent, present };
    enum class Bus { unknown, none, open };

    explicit StatusNotifierHostWatch(QObject* parent = nullptr);

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] Bus bus() const { return m_bus; }
    /// The unique name of the watcher to register with; a new one means that items must register again.
    [[nodiscard]] QString watcher() const { return m_watcher; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void nameOwnerChanged(const QString& name, const QString& before, const QString& now,
                          const QDBusMessage& message);
    void hostsChanged();

private:
    void openLink();
    void linkIsLost();
    void tryAgainLater();
    void busReady();
    void askForWatcher();
    void askForHost();
    void watcherIs(const QString& owner);
    void settle(State state);

    std::unique_ptr<SessionBusLink> m_link;
    /// Runs while a new connection waits to be made.
    QTimer m_return;
    std::chrono::milliseconds m_returnPause;
    std::chrono::steady_clock::time_point m_lastLoss;
    /// True once there was a bus.
    bool m_wasOpen = false;
    /// The attempts in a row that found no bus.
    int m_failures = 0;
    Bus m_bus = Bus::unknown;
    State m_state = State::asking;
    QString m_watcher;
    /// The number of the last question: answers to earlier ones don't count.
    int m_question = 0;
};

} // namespace orvane
