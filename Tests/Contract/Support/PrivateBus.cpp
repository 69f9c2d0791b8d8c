#include "Contract/Support/PrivateBus.h"

#include "Support/Eventually.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace orvane::tests {

PrivateBus::PrivateBus(const QString& policy, const QMap<QString, QString>& startable)
{
    QDir().mkpath(m_directory.filePath(u"services"_qs));
    write(u"bus.conf"_qs,
          QStringLiteral("<busconfig><type>session</type><listen>%1</listen><servicedir>%2</servicedir>"
                         "<policy context='default'><allow send_destination='*'/>"
                         "<allow receive_sender='*'/><allow own='*'/>%3</policy>"
                         "</busconfig>")
              .arg(address(), m_directory.filePath(u"services"_qs), policy));
    for (auto it = startable.begin(); it != startable.end(); ++it) {
        write(u"services/%1.service"_qs.arg(it.key()),
              QStringLiteral("[D-BUS Service]\nName=%1\nExec=%2\n").arg(it.key(), it.value()));
    }
    m_daemon.emplace(u"dbus-daemon"_qs,
                     QStringList{u"--nofork"_qs, u"--config-file"_qs, m_directory.filePath(u"bus.conf"_qs)});
    EXPECT_TRUE(eventually(10s, [this] { return QFile::exists(m_directory.filePath(u"socket"_qs)); }));
}

PrivateBus::~PrivateBus()
{
    for (const QString& name : m_connections)
        QDBusConnection::disconnectFromBus(name);
}

QDBusConnection PrivateBus::connection()
{
    static int number = 0;
    m_connections.append(QStringLiteral("private-%1").arg(++number));
    return QDBusConnection::connectToBus(address(), m_connections.last());
}

QString PrivateBus::address() const
{
    return QStringLiteral("unix:path=") + m_directory.filePath(u"socket"_qs);
}

void PrivateBus::write(const QString& name, const QString& text)
{
    QFile file(m_directory.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
}

} // namespace orvane::tests
