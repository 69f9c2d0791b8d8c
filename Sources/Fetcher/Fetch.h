// One GET request, and its response to the program.
#pragma once

#include "Fetcher/AnswerFile.h"

#include <QNetworkAccessManager>
#include <QSslConfiguration>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <optional>

class QNetworkReply;

namespace orvane {

class Fetch : public QObject {
public:
    struct Request {
        QUrl url;
        qint64 mostBytes = 0;
        std::chrono::milliseconds patience{};
        /// Trusted in the place of the system's authorities.
        std::optional<QList<QSslCertificate>> authorities = std::nullopt;
    };

    /// Ends the event loop when the answer is written.
    explicit Fetch(Request request);

private:
    void start();
    void read();
    void noteProgress();
    void finish();
    void fail(FetchProtocol::Status status, const QString& reason = {});
    [[nodiscard]] bool isTooLong() const;

    Request m_request;
    AnswerFile m_answer;
    QNetworkAccessManager m_network;
    QNetworkReply* m_reply = nullptr; // of the manager
    QTimer m_silence;
    qint64 m_bytes = 0;
    QString m_certificateProblem;
    bool m_isAnswered = false;
};

} // namespace orvane
