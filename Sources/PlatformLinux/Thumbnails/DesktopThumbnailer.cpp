#include "PlatformLinux/Thumbnails/DesktopThumbnailer.h"

#include "PlatformLinux/Common/PoolThreadLent.h"
#include "PlatformLinux/Thumbnails/ThumbnailerQuestion.h"

#include <QUuid>

namespace orvane {

namespace {

constexpr std::chrono::minutes pauseAfterSilence{1};

} // namespace

DesktopThumbnailer::Outcome DesktopThumbnailer::ask(const QByteArray& uri, const QString& mimeType,
                                                    const QString& flavour, const std::stop_token& stop) const
{
    const QString name = QStringLiteral("thumbnailer-") + QUuid::createUuid().toString();
    Outcome outcome = Outcome::noAnswer;
    {
        // A connection of its own: its signals come on this thread, which waits for them.
        const QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        ThumbnailerQuestion question(bus);
        switch (question.ask(uri, mimeType, flavour, m_limit, stop)) {
        case ThumbnailerQuestion::Answer::ready:
            outcome = Outcome::made;
            break;
        case ThumbnailerQuestion::Answer::refused:
        case ThumbnailerQuestion::Answer::stopped:
            outcome = Outcome::failed;
            break;
        case ThumbnailerQuestion::Answer::none:
            break;
        }
    }
    QDBusConnection::disconnectFromBus(name);
    return outcome;
}

bool DesktopThumbnailer::make(const QByteArray& uri, const QString& mimeType, const QString& flavour,
                              const std::stop_token& stop)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (std::chrono::steady_clock::now() < m_askFrom)
            return false;
    }
    const PoolThreadLent lent;
    const Outcome outcome = ask(uri, mimeType, flavour, stop);
    if (outcome == Outcome::noAnswer) {
        const std::scoped_lock lock(m_mutex);
        m_askFrom = std::chrono::steady_clock::now() + pauseAfterSilence;
    }
    return outcome == Outcome::made;
}

} // namespace orvane
