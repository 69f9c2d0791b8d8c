// One question to the desktop's thumbnailer. Lives on the thread that asks.
#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QEventLoop>
#include <QObject>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>
#include <stop_token>

namespace orvane {

class ThumbnailerQuestion : public QObject {
    Q_OBJECT
public:
    enum class Answer {
        ready,
        /// It can't make a picture of that file.
        refused,
        /// There is none, or it was silent until the limit.
        none,
        stopped,
    };

    explicit ThumbnailerQuestion(QDBusConnection bus) : m_bus(std::move(bus)) {}

    /// Waits for the answer; once for an object.
    [[nodiscard]] Answer ask(const QByteArray& uri, const QString& mimeType, const QString& flavour,
                             std::chrono::milliseconds limit, const std::stop_token& stop);

private Q_SLOTS:
    void ready(uint handle, const QStringList& uris);
    void error(uint handle, const QStringList& uris, int code, const QString& message);
    void finished(uint handle);

private:
    void end(Answer answer);

    QDBusConnection m_bus;
    QString m_uri;
    std::optional<uint> m_handle;
    QEventLoop m_loop;
    Answer m_answer = Answer::none;
    bool m_hasEnded = false;
};

} // namespace orvane
