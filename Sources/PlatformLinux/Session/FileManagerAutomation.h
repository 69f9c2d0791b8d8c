// Whether the desktop's file manager can be asked for things, over the session bus.
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
    static constexpr OSStatus errAETimeout = -1712; // it is there, and doesn't answer

    explicit FileManagerAutomation(QDBusConnection session = QDBusConnection::sessionBus());

    /// noErr also for one that isn't running and would be started by the first call to it. The first call
    /// waits for the answer, for 0.15 s at most; later ones give what is known. Main thread.
    OSStatus status();
    /// Asks it, and starts it if need be. Any thread; blocks until it answers, for 25 s at most.
    OSStatus askAndStart();

private Q_SLOTS:
    void refresh();

private:
    void listen();
    void askWhetherItCanBeStarted(unsigned number);

    QDBusConnection m_session;
    bool m_listens = false;
    std::atomic<OSStatus> m_status = Permissions::errAEEventWouldRequireUserConsent;
    /// Of the last question: an earlier one's answer may come after it.
    unsigned m_question = 0;
};

} // namespace orvane
