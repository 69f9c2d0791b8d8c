#include "PlatformLinux/Thumbnails/ThumbnailerQuestion.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QTimer>

namespace orvane {

namespace {

const QString service = QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1");
const QString object = QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1");
const QString scheduler = QStringLiteral("foreground");

} // namespace

ThumbnailerQuestion::Answer ThumbnailerQuestion::ask(const QByteArray& uri, const QString& mimeType,
                                                     const QString& flavour, std::chrono::milliseconds limit,
                                                     const std::stop_token& stop)
{
    if (!m_bus.isConnected())
        return Answer::none;
    m_uri = QString::fromLatin1(uri);
    // Signals go to the one that has asked. They may come before the reply to the question.
    const auto follow = [this](const char* signal, const char* slot) {
        m_bus.connect(service, object, service, QLatin1String(signal), this, slot);
    };
    follow("Ready", SLOT(ready(uint, QStringList)));
    follow("Error", SLOT(error(uint, QStringList, int, QString)));
    follow("Finished", SLOT(finished(uint)));

    QDBusMessage question = QDBusMessage::createMethodCall(service, object, service, QStringLiteral("Queue"));
    question << QStringList{m_uri} << QStringList{mimeType} << flavour << scheduler << 0U;
    const QDBusPendingCallWatcher reply(m_bus.asyncCall(question, static_cast<int>(limit.count())));
    connect(&reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
        const QDBusPendingReply<uint> handle = *call;
        if (handle.isError())
            end(Answer::none);
        else
            m_handle = handle.value();
    });
    QTimer::singleShot(limit, this, [this] { end(Answer::none); });
    const std::stop_callback stopping(stop, [this] {
        QMetaObject::invokeMethod(
            this, [this] { end(Answer::stopped); }, Qt::QueuedConnection);
    });
    if (!m_hasEnded)
        m_loop.exec();
    return m_answer;
}

void ThumbnailerQuestion::ready(uint, const QStringList& uris)
{
    if (uris.contains(m_uri))
        end(Answer::ready);
}

void ThumbnailerQuestion::error(uint, const QStringList& uris, int, const QString&)
{
    if (uris.contains(m_uri))
        end(Answer::refused);
}

void ThumbnailerQuestion::finished(uint handle)
{
    if (handle == m_handle)
        end(Answer::refused); // it has said nothing about the file before
}

void ThumbnailerQuestion::end(Answer answer)
{
    if (m_hasEnded)
        return;
    m_hasEnded = true;
    m_answer = answer;
    m_loop.quit();
}

} // namespace orvane
