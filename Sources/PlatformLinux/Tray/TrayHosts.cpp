#include "PlatformLinux/Tray/TrayHosts.h"

#include "PlatformLinux/Tray/StatusNotifierNames.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <algorithm>
#include <vector>

namespace orvane {

namespace {

const QString daemonName = QStringLiteral("org.freedesktop.DBus");
const QString daemonPath = QStringLiteral("/org/freedesktop/DBus");

/// A desktop has one or two status areas.
constexpr qsizetype mostHosts = 16;

QDBusMessage daemonCall(const QString& method)
{
    return QDBusMessage::createMethodCall(daemonName, daemonPath, daemonName, method);
}

QStringList namesOfHosts(const QStringList& all)
{
    QStringList names{sni::watcherName};
    for (const QString& name : all) {
        const bool isHost = name.startsWith(QLatin1StringView("org.kde.StatusNotifierHost-")) ||
                            name.startsWith(QLatin1StringView("org.freedesktop.StatusNotifierHost-"));
        if (isHost && names.size() < mostHosts)
            names.append(name);
    }
    return names;
}

} // namespace

/// The questions about one caller, whose last answer decides.
struct TrayHosts::Inquiry {
    QString caller;
    std::function<void(std::optional<std::int64_t>)> then;
    std::optional<std::int64_t> process;
    std::vector<std::int64_t> hosts;
    qsizetype unanswered = 0;
};

void TrayHosts::identify(const QString& caller, std::function<void(std::optional<std::int64_t>)> then)
{
    auto inquiry = std::make_shared<Inquiry>();
    inquiry->caller = caller;
    inquiry->then = std::move(then);
    auto* pending =
        new QDBusPendingCallWatcher(m_bus.asyncCall(daemonCall(QStringLiteral("ListNames"))), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, inquiry] {
        pending->deleteLater();
        const QDBusPendingReply<QStringList> all = *pending;
        const QStringList names = namesOfHosts(all.isValid() ? all.value() : QStringList());
        inquiry->unanswered = names.size() + 1;
        askForProcess(inquiry->caller, inquiry);
        for (const QString& name : names)
            askForProcess(name, inquiry);
    });
}

void TrayHosts::askForProcess(const QString& name, const std::shared_ptr<Inquiry>& inquiry)
{
    auto question = daemonCall(QStringLiteral("GetConnectionUnixProcessID"));
    question << name;
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [pending, name, inquiry] {
        pending->deleteLater();
        const QDBusPendingReply<uint> process = *pending;
        if (process.isValid() && name == inquiry->caller)
            inquiry->process = process.value();
        else if (process.isValid())
            inquiry->hosts.push_back(process.value());
        if (--inquiry->unanswered > 0)
            return;
        const bool isHost =
            inquiry->process && std::ranges::find(inquiry->hosts, *inquiry->process) != inquiry->hosts.end();
        inquiry->then(isHost ? inquiry->process : std::nullopt);
    });
}

} // namespace orvane
