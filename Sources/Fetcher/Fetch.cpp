#include "Fetcher/Fetch.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QSslError>

#include <memory>

#include <unistd.h>

namespace orvane {

namespace {

using namespace std::chrono_literals;

constexpr int mostRedirections = 10;
constexpr qint64 pieceSize = qint64{256} * 1024;
/// A library that asks for the proxy may wait without the event loop; this is for it alone.
constexpr auto furtherPatience = 10s;

bool isThisMachine(const QString& host)
{
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

/// The proxies of the desktop.
class DesktopProxies : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override
    {
        return systemProxyForQuery(query);
    }
};

/// The same for a test: a connection that would leave this machine goes to a port where nobody listens.
class ProxiesOfThisMachine final : public DesktopProxies {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override
    {
        const QList<QNetworkProxy> proxies = DesktopProxies::queryProxy(query);
        const QNetworkProxy first = proxies.value(0);
        const bool isDirect = first.type() == QNetworkProxy::NoProxy;
        if (isThisMachine(isDirect ? query.peerHostName() : first.hostName()))
            return {first};
        return {QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), 1)};
    }
};

} // namespace

Fetch::Fetch(Request request) : m_request(std::move(request))
{
    m_network.setProxyFactory(m_request.authorities ? new ProxiesOfThisMachine : new DesktopProxies);
    m_silence.setSingleShot(true);
    m_silence.setInterval(m_request.patience);
    QObject::connect(&m_silence, &QTimer::timeout, this, [this] { fail(FetchProtocol::silent); });
    QTimer::singleShot(0, this, [this] { start(); });
}

void Fetch::start()
{
    if (m_request.url.scheme() != QLatin1String("https")) {
        fail(FetchProtocol::insecure);
        return;
    }
    QNetworkRequest request(m_request.url);
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Orvane/" ORVANE_VERSION));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setMaximumRedirectsAllowed(mostRedirections);
    if (m_request.authorities) {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(*m_request.authorities);
        request.setSslConfiguration(configuration);
    }
    noteProgress();
    m_reply = m_network.get(request);
    m_reply->setReadBufferSize(4 * pieceSize);
    QObject::connect(m_reply, &QNetworkReply::sslErrors, this, [this](const QList<QSslError>& errors) {
        m_certificateProblem = errors.value(0).errorString();
    });
    QObject::connect(m_reply, &QNetworkReply::encrypted, this, [this] { noteProgress(); });
    QObject::connect(m_reply, &QNetworkReply::metaDataChanged, this, [this] { noteProgress(); });
    QObject::connect(m_reply, &QNetworkReply::readyRead, this, [this] { read(); });
    QObject::connect(m_reply, &QNetworkReply::finished, this, [this] { finish(); });
}

void Fetch::noteProgress()
{
    m_silence.start();
    ::alarm(static_cast<unsigned>(
        std::chrono::duration_cast<std::chrono::seconds>(m_request.patience + furtherPatience).count()));
    if (m_reply && isTooLong())
        fail(FetchProtocol::tooLong);
}

bool Fetch::isTooLong() const
{
    const qint64 announced = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    return announced > m_request.mostBytes || m_bytes > m_request.mostBytes;
}

void Fetch::read()
{
    while (!m_isAnswered && m_reply->bytesAvailable() > 0) {
        const QByteArray piece = m_reply->read(pieceSize);
        if (piece.isEmpty())
            break;
        m_bytes += piece.size();
        noteProgress();
        if (!m_isAnswered)
            m_answer.append(piece);
    }
}

void Fetch::finish()
{
    read();
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const auto error = m_reply->error();
    // A status that tells of a failure is an error here too, but a response to the program.
    const bool isResponse =
        error == QNetworkReply::NoError || (error > QNetworkReply::ProxyTimeoutError && status >= 400);
    if (!isResponse || status <= 0)
        fail(FetchProtocol::failed,
             m_certificateProblem.isEmpty() ? m_reply->errorString() : m_certificateProblem);
    if (m_isAnswered)
        return;
    m_isAnswered = true;
    m_answer.finish(status);
    QCoreApplication::quit();
}

void Fetch::fail(FetchProtocol::Status status, const QString& reason)
{
    if (m_isAnswered)
        return;
    m_isAnswered = true;
    m_answer.fail(status, reason);
    QCoreApplication::quit();
}

} // namespace orvane
