#include "Desktop/Support/Logind.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include <csignal>
#include <stdexcept>

namespace orvane::tests {

std::optional<QList<Inhibitor>> inhibitors()
{
    const QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("ListInhibitors"));
    const QDBusMessage answer = QDBusConnection::systemBus().call(question, QDBus::Block, 5000);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != QLatin1String("a(ssssuu)"))
        return std::nullopt;

    QList<Inhibitor> held;
    const auto list = answer.arguments().constFirst().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        Inhibitor inhibitor;
        list.beginStructure();
        list >> inhibitor.what >> inhibitor.who >> inhibitor.why >> inhibitor.mode >> inhibitor.uid >>
            inhibitor.pid;
        list.endStructure();
        held.append(inhibitor);
    }
    list.endArray();
    return held;
}

StuckLogind::StuckLogind()
{
    const QDBusReply<uint> process =
        QDBusConnection::systemBus().interface()->servicePid(QStringLiteral("org.freedesktop.login1"));
    if (!process.isValid())
        throw std::runtime_error("Nobody answers for logind");
    m_process = static_cast<pid_t>(process.value());
    ::kill(m_process, SIGSTOP);
}

StuckLogind::~StuckLogind()
{
    ::kill(m_process, SIGCONT);
}

} // namespace orvane::tests
