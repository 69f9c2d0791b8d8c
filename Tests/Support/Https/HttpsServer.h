// An HTTPS server on the loopback, in the event loop of the test. It is a proxy too: a client that is told to
// use it finds every host here.
#pragma once

#include "Support/Https/Certificates.h"

#include <QHash>
#include <QTcpServer>
#include <QUrl>

#include <functional>
#include <optional>

class QSslSocket;

namespace orvane::tests {

class HttpsServer : public QTcpServer {
public:
    struct Reply {
        int status = 200;
        QByteArray body = {};
        /// Lines without their ends.
        QList<QByteArray> headers = {};
        /// Sends this much of the body and no more; the connection then stays open or ends.
        std::optional<qsizetype> stallsAfter = std::nullopt;
        std::optional<qsizetype> breaksAfter = std::nullopt;
    };
    struct Request {
        QString host;
        /// With the query.
        QString path;
        QHash<QByteArray, QByteArray> headers; // names in lower case
    };

    /// Listens on a free port.
    explicit HttpsServer(const Certificates& certificates);

    /// A URL of this server without the proxy.
    [[nodiscard]] QUrl url(const QString& path) const;
    /// The value of the variable "https_proxy".
    [[nodiscard]] QString proxy() const;

    /// Answers every request; 404 for all without one.
    std::function<Reply(const Request&)> onRequest = [](const Request&) { return Reply{.status = 404}; };
    /// The requests so far.
    QList<Request> requests;
    /// Connections that reached this port at all.
    int connections = 0;

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    class Greeting;
    void encrypt(qintptr descriptor);
    void read(QSslSocket& socket);
    void answer(QSslSocket& socket, const Request& request);

    QSslCertificate m_certificate;
    QSslKey m_key;
};

} // namespace orvane::tests
