#include "Support/Https/HttpsServer.h"

#include <QSocketNotifier>
#include <QSslSocket>

#include <array>
#include <stdexcept>

#include <sys/socket.h>

namespace orvane::tests {

namespace {

const QByteArray endOfHead = "\r\n\r\n";

std::optional<HttpsServer::Request> parse(const QByteArray& head)
{
    HttpsServer::Request request;
    QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> words = lines.takeFirst().trimmed().split(' ');
    if (words.size() != 3 || words.first() != "GET")
        return std::nullopt;
    request.path = QString::fromLatin1(words.at(1));
    for (const QByteArray& line : lines) {
        const auto colon = line.indexOf(':');
        if (colon > 0)
            request.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    request.host = QString::fromLatin1(request.headers.value("host"));
    return request;
}

} // namespace

/// Reads what comes before the encryption: nothing, or the request to a proxy.
class HttpsServer::Greeting : public QObject {
public:
    Greeting(HttpsServer& server, qintptr descriptor)
        : QObject(&server),
          m_server(server),
          m_descriptor(descriptor),
          m_notifier(descriptor, QSocketNotifier::Read)
    {
        connect(&m_notifier, &QSocketNotifier::activated, this, [this] { look(); });
    }

private:
    void look()
    {
        std::array<char, 4096> bytes{};
        const int socket = static_cast<int>(m_descriptor);
        const auto count = ::recv(socket, bytes.data(), bytes.size(), MSG_PEEK);
        const QByteArray seen(bytes.data(), qMax<qsizetype>(count, 0));
        if (!seen.startsWith("CONNECT ")) {
            m_notifier.setEnabled(false);
            m_server.encrypt(m_descriptor);
            deleteLater();
            return;
        }
        const auto end = seen.indexOf(endOfHead);
        if (end < 0)
            return;
        const QByteArray established = "HTTP/1.1 200 OK\r\n\r\n";
        (void)::recv(socket, bytes.data(), static_cast<std::size_t>(end + endOfHead.size()), 0);
        (void)::send(socket, established.constData(), static_cast<std::size_t>(established.size()),
                     MSG_NOSIGNAL);
    }

    HttpsServer& m_server;
    qintptr m_descriptor;
    QSocketNotifier m_notifier;
};

HttpsServer::HttpsServer(const Certificates& certificates)
    : m_certificate(certificates.certificate()), m_key(certificates.key())
{
    if (m_certificate.isNull() || m_key.isNull() || !listen(QHostAddress::LocalHost))
        throw std::runtime_error("the server can't be started");
}

QUrl HttpsServer::url(const QString& path) const
{
    return QUrl(QStringLiteral("https://127.0.0.1:%1%2").arg(serverPort()).arg(path));
}

QString HttpsServer::proxy() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(serverPort());
}

void HttpsServer::incomingConnection(qintptr descriptor)
{
    ++connections;
    new Greeting(*this, descriptor);
}

void HttpsServer::encrypt(qintptr descriptor)
{
    auto* const socket = new QSslSocket(this);
    socket->setSocketDescriptor(descriptor);
    socket->setLocalCertificate(m_certificate);
    socket->setPrivateKey(m_key);
    connect(socket, &QSslSocket::readyRead, this, [this, socket] { read(*socket); });
    connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
    socket->startServerEncryption();
}

void HttpsServer::read(QSslSocket& socket)
{
    const QByteArray seen = socket.peek(socket.bytesAvailable());
    const auto end = seen.indexOf(endOfHead);
    if (end < 0)
        return;
    socket.skip(end + endOfHead.size());
    if (const auto request = parse(seen.left(end)))
        answer(socket, *request);
    else
        socket.disconnectFromHost();
}

void HttpsServer::answer(QSslSocket& socket, const Request& request)
{
    requests.append(request);
    const Reply reply = onRequest(request);
    socket.write("HTTP/1.1 " + QByteArray::number(reply.status) +
                 " Status\r\nConnection: close\r\nContent-Length: " + QByteArray::number(reply.body.size()) +
                 "\r\n");
    for (const QByteArray& header : reply.headers)
        socket.write(header + "\r\n");
    socket.write("\r\n");
    if (reply.stallsAfter) {
        socket.write(reply.body.left(*reply.stallsAfter));
        return;
    }
    socket.write(reply.body.left(reply.breaksAfter.value_or(reply.body.size())));
    socket.disconnectFromHost();
}

} // namespace orvane::tests
