// Knows if the desktop's file manager can be asked for things over the session bus.
#pragma once

#include "Platform/Permissions.h"

#include <QDBusConnection>
#include <QObject>

#include <atomic>

namespace orvane {

class FileManagerAutomation : public QObject {
    Q_OBJECT
public:
    using OSStatus = Permissions::OSStatus;
    static constexpr OSStatus errAETimeout = -1712; // it is there and doesn't answer

    explicit FileManagerAutomation(QDBusConnection session = QDBusConnection::sessionBus());

    /// noErr also for a file manager that isn't running and would be started by the first call to it. The
    /// first call waits for the answer for at most 0.15 s; later ones return what is known. Main thread.
    OSStatus status();
    /// Asks the file manager and starts it if need be. Any thread; blocks until it answers, for at most 25 s
    /// or until giveUp(). A given up question counts as one that wasn't answered in time.
    OSStatus askAndStart();
    /// Ends all waits, present and future. Main thread.
    void giveUp();

Q_SIGNALS:
    /// Emitted when the answer of status() has changed by itself.
    void changed();
    void givenUp();

private Q_SLOTS:
    void refresh();

private:
    void listen();
    void askWhetherItCanBeStarted(unsigned number);
    void settle(OSStatus status);

    QDBusConnection m_session;
    bool m_listens = false;
    std::atomic_bool m_hasGivenUp = false;
    std::atomic<OSStatus> m_status = Permissions::errAEEventWouldRequireUserConsent;
    /// The number of the last question: the answer to an earlier one may come after it.
    unsigned m_question = 0;
};

} // namespace orvane
