#include "PlatformLinux/Session/FileManagerAutomation.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDeadlineTimer>
#include <QEventLoop>

#include <algorithm>

namespace orvane {

namespace {

const QString fileManager = QStringLiteral("org.freedesktop.FileManager1");
const QString daemonName = QStringLiteral("org.freedesktop.DBus");
const QString daemonPath = QStringLiteral("/org/freedesktop/DBus");

enum class Start { no, ifNeeded };

QDBusMessage ping(Start start)
{
    auto call =
        QDBusMessage::createMethodCall(fileManager, QStringLiteral("/org/freedesktop/FileManager1"),
                                       QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    call.setAutoStartService(start == Start::ifNeeded);
    return call;
}

QDBusMessage startableNames()
{
    return QDBusMessage::createMethodCall(daemonName, daemonPath, daemonName,
                                          QStringLiteral("ListActivatableNames"));
}

Permissions::OSStatus statusOf(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::NoError:
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownObject:
    case QDBusError::UnknownInterface:
        return Permissions::noErr; // any answer shows that it is there
    case QDBusError::AccessDenied:
        return Permissions::errAEEventNotPermitted;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return FileManagerAutomation::errAETimeout;
    default:
        return Permissions::procNotFound; // the name has no owner, or the program couldn't be started
    }
}

Permissions::OSStatus statusOfStartable(const QDBusPendingReply<QStringList>& names)
{
    return names.isValid() && names.value().contains(fileManager) ? Permissions::noErr
                                                                  : Permissions::procNotFound;
}

} // namespace

FileManagerAutomation::FileManagerAutomation(QDBusConnection session) : m_session(std::move(session)) {}

FileManagerAutomation::OSStatus FileManagerAutomation::status()
{
    if (!m_session.isConnected())
        return Permissions::procNotFound;
    if (!m_listens) {
        listen();
        QDeadlineTimer end(150);
        const auto remaining = [&] { return static_cast<int>(std::max<qint64>(end.remainingTime(), 1)); };
        OSStatus status = statusOf(QDBusError(m_session.call(ping(Start::no), QDBus::Block, remaining())));
        if (status == Permissions::procNotFound) {
            const QDBusMessage names = m_session.call(startableNames(), QDBus::Block, remaining());
            status = statusOfStartable(QDBusPendingCall::fromCompletedCall(names));
        }
        m_status = status;
        if (end.hasExpired())
            refresh(); // it may only have been slow
    }
    return m_status;
}

FileManagerAutomation::OSStatus FileManagerAutomation::askAndStart()
{
    constexpr int longestWaitMs = 25000;
    if (!m_session.isConnected())
        return Permissions::procNotFound;
    QDBusPendingCallWatcher answer(m_session.asyncCall(ping(Start::ifNeeded), longestWaitMs));
    // A loop of the calling thread, which only waits: both signals come as events to it.
    QEventLoop wait;
    connect(&answer, &QDBusPendingCallWatcher::finished, &wait, &QEventLoop::quit);
    connect(this, &FileManagerAutomation::givenUp, &wait, &QEventLoop::quit);
    if (!answer.isFinished() && !m_hasGivenUp)
        wait.exec();
    if (!answer.isFinished())
        return errAETimeout;
    const OSStatus status = statusOf(answer.error());
    m_status = status;
    return status;
}

void FileManagerAutomation::giveUp()
{
    m_hasGivenUp = true;
    Q_EMIT givenUp();
}

void FileManagerAutomation::listen()
{
    m_listens = true;
    m_session.connect(daemonName, daemonPath, daemonName, QStringLiteral("NameOwnerChanged"), {fileManager},
                      QString(), this, SLOT(refresh()));
    // Newer daemons emit this when a program that could be started is installed or removed.
    m_session.connect(daemonName, daemonPath, daemonName, QStringLiteral("ActivatableServicesChanged"), this,
                      SLOT(refresh()));
}

void FileManagerAutomation::refresh()
{
    auto* pending = new QDBusPendingCallWatcher(m_session.asyncCall(ping(Start::no)), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, number = ++m_question] {
        pending->deleteLater();
        if (number != m_question)
            return;
        const OSStatus status = statusOf(pending->error());
        if (status == Permissions::procNotFound)
            askWhetherItCanBeStarted(number);
        else
            settle(status);
    });
}

void FileManagerAutomation::askWhetherItCanBeStarted(unsigned number)
{
    auto* pending = new QDBusPendingCallWatcher(m_session.asyncCall(startableNames()), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, number] {
        pending->deleteLater();
        if (number == m_question)
            settle(statusOfStartable(*pending));
    });
}

void FileManagerAutomation::settle(OSStatus status)
{
    if (m_status.exchange(status) != status)
        Q_EMIT changed();
}

} // namespace orvane
