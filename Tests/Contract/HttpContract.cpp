// Documents by HTTPS: the fake and the real service, whose server is one of the test's.
#include "Fakes/FakeHttp.h"
#include "Fakes/FakeRunLoop.h"
#include "Platform/Protocols/FetchProtocol.h"
#include "PlatformLinux/Http/FetcherHttp.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "Support/Eventually.h"
#include "Support/Https/HttpsServer.h"

#include <QSslSocket>

#include <gtest/gtest.h>

namespace orvane::tests {

namespace {

class FakeNet {
public:
    Http& http() { return m_http; }
    [[nodiscard]] QUrl url(const QString& path) const { return QUrl(QStringLiteral("https://here") + path); }
    void serve(const QString& path, int status, const QByteArray& body)
    {
        m_http.answers.insert(url(path), Http::Response{status, body});
    }
    bool runUntil(const std::function<bool()>& condition)
    {
        m_loop.drain();
        return condition();
    }

private:
    FakeClock m_clock;
    FakeRunLoop m_loop{m_clock};
    FakeHttp m_http{m_loop};
};

/// The certificates are made once for all tests.
const Certificates& certificates()
{
    static const Certificates made({QStringLiteral("www.bing.com")});
    return made;
}

/// Sets a variable of this process's environment while it exists; fetchers inherit it.
class Variable {
public:
    Variable(const char* name, const QByteArray& value) : m_name(name), m_old(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~Variable()
    {
        if (m_old.isNull())
            qunsetenv(m_name);
        else
            qputenv(m_name, m_old);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    QByteArray m_old;
};

class RealNet {
public:
    RealNet()
    {
        server.onRequest = [this](const HttpsServer::Request& request) {
            return replies.value(request.path, {.status = 404});
        };
    }

    Http& http() { return m_http; }
    [[nodiscard]] QUrl url(const QString& path) const { return server.url(path); }
    void serve(const QString& path, int status, const QByteArray& body)
    {
        replies.insert(path, {.status = status, .body = body});
    }
    bool runUntil(const std::function<bool()>& condition) { return eventually(20s, condition); }

    HttpsServer server{certificates()};
    QHash<QString, HttpsServer::Reply> replies;

private:
    Variable m_authority{FetchProtocol::testAuthorityVariable, certificates().authorityFile().toUtf8()};
    QtRunLoop m_loop;
    FetcherHttp m_http{m_loop};
};

template <class Net>
class HttpContract : public testing::Test {
protected:
    Http::Answer get(const Http::Request& request)
    {
        std::optional<Http::Answer> answer;
        net.http().get(request, [&answer](const Http::Answer& told) { answer = told; });
        EXPECT_FALSE(answer) << "it comes in a later turn";
        EXPECT_TRUE(net.runUntil([&answer] { return answer.has_value(); }));
        return answer.value_or(Http::Response{});
    }
    Http::Answer get(const QString& path) { return get({.url = net.url(path), .mostBytes = 1'000'000}); }

    Net net;
};

QString errorOf(const Http::Answer& answer)
{
    const auto* const error = std::get_if<PlatformError>(&answer);
    return error ? QString::fromUtf8(error->what()) : QString();
}

int statusOf(const Http::Answer& answer)
{
    const auto* const response = std::get_if<Http::Response>(&answer);
    return response ? response->status : -1;
}

using Nets = testing::Types<FakeNet, RealNet>;
TYPED_TEST_SUITE(HttpContract, Nets);

using HttpLiveTest = HttpContract<RealNet>;

} // namespace

TYPED_TEST(HttpContract, GivesTheStatusAndTheBody)
{
    QByteArray body(300'000, 'a');
    body[17] = '\0';
    this->net.serve(QStringLiteral("/a?b=c"), 200, body);
    const Http::Answer answer = this->get(QStringLiteral("/a?b=c"));
    ASSERT_EQ(statusOf(answer), 200) << errorOf(answer).toStdString();
    EXPECT_EQ(std::get<Http::Response>(answer).body, body);
}

TYPED_TEST(HttpContract, AStatusThatTellsOfAFailureIsAResponse)
{
    for (const int status : {204, 401, 404, 500, 503}) {
        this->net.serve(QStringLiteral("/failed"), status, {});
        EXPECT_EQ(statusOf(this->get(QStringLiteral("/failed"))), status);
    }
}

TYPED_TEST(HttpContract, ABodyOfTheLimitIsTakenAndALongerOneRefused)
{
    this->net.serve(QStringLiteral("/long"), 200, QByteArray(1000, 'x'));
    const QUrl url = this->net.url(QStringLiteral("/long"));
    EXPECT_EQ(statusOf(this->get({.url = url, .mostBytes = 1000})), 200);
    EXPECT_EQ(errorOf(this->get({.url = url, .mostBytes = 999})),
              QStringLiteral("The server sends more than is loaded."));
}

TYPED_TEST(HttpContract, APlainAddressIsRefused)
{
    QUrl url = this->net.url(QStringLiteral("/plain"));
    url.setScheme(QStringLiteral("http"));
    EXPECT_EQ(errorOf(this->get({.url = url, .mostBytes = 1000})),
              QStringLiteral("Only secure addresses are loaded."));
}

TEST_F(HttpLiveTest, TheServerIsToldTheProgramsNameAndVersion)
{
    (void)get(QStringLiteral("/"));
    ASSERT_EQ(net.server.requests.size(), 1);
    EXPECT_EQ(net.server.requests.first().headers.value("user-agent"), QByteArray("Orvane/" ORVANE_VERSION));
}

TEST_F(HttpLiveTest, RedirectionsAreFollowedToSecureAddressesAlone)
{
    net.serve(QStringLiteral("/end"), 200, "end");
    net.replies.insert(QStringLiteral("/moved"), {.status = 302, .headers = {"Location: /end"}});
    EXPECT_EQ(std::get<Http::Response>(get(QStringLiteral("/moved"))).body, "end");

    const int before = net.server.connections;
    net.replies.insert(
        QStringLiteral("/plain"),
        {.status = 302,
         .headers = {"Location: http://127.0.0.1:" + QByteArray::number(net.server.serverPort()) + "/end"}});
    EXPECT_FALSE(errorOf(get(QStringLiteral("/plain"))).isEmpty());
    EXPECT_EQ(net.server.connections, before + 1) << "the plain address isn't asked";
}

TEST_F(HttpLiveTest, RedirectionsForEverEnd)
{
    net.replies.insert(QStringLiteral("/round"), {.status = 302, .headers = {"Location: /round"}});
    EXPECT_FALSE(errorOf(get(QStringLiteral("/round"))).isEmpty());
    EXPECT_LE(net.server.requests.size(), 30);
}

TEST_F(HttpLiveTest, ACertificateOfAnotherAuthorityIsRefused)
{
    HttpsServer other{Certificates({QStringLiteral("www.bing.com")})};
    EXPECT_FALSE(errorOf(get({.url = other.url(QStringLiteral("/")), .mostBytes = 1000})).isEmpty());
    EXPECT_EQ(other.connections, 1);
    EXPECT_TRUE(other.requests.isEmpty()) << "nothing is told to a server that isn't the right one";
}

TEST_F(HttpLiveTest, ACertificateForAnotherNameIsRefused)
{
    QUrl url = net.url(QStringLiteral("/"));
    url.setHost(QStringLiteral("localhost"));
    EXPECT_FALSE(errorOf(get({.url = url, .mostBytes = 1000})).isEmpty());
    EXPECT_TRUE(net.server.requests.isEmpty());
}

TEST_F(HttpLiveTest, AServerThatStallsIsGivenUp)
{
    net.replies.insert(QStringLiteral("/half"), {.body = QByteArray(1000, 'x'), .stallsAfter = 500});
    EXPECT_EQ(errorOf(get({.url = net.url(QStringLiteral("/half")), .mostBytes = 1000, .patience = 300ms})),
              QStringLiteral("The server hasn’t answered for too long."));
}

TEST_F(HttpLiveTest, AConnectionThatBreaksInTheMiddleGivesNoResponse)
{
    net.replies.insert(QStringLiteral("/half"), {.body = QByteArray(1000, 'x'), .breaksAfter = 500});
    EXPECT_FALSE(errorOf(get(QStringLiteral("/half"))).isEmpty());
}

TEST_F(HttpLiveTest, NobodyListening)
{
    const QUrl url = net.url(QStringLiteral("/"));
    net.server.close();
    EXPECT_FALSE(errorOf(get({.url = url, .mostBytes = 1000})).isEmpty());
}

TEST_F(HttpLiveTest, TheProxyOfTheDesktopIsUsed)
{
    const Variable proxy("https_proxy", net.server.proxy().toUtf8());
    net.serve(QStringLiteral("/x"), 200, "through the proxy");
    const Http::Answer answer =
        get({.url = QUrl(QStringLiteral("https://www.bing.com/x")), .mostBytes = 1000});
    ASSERT_EQ(statusOf(answer), 200) << errorOf(answer).toStdString();
    EXPECT_EQ(std::get<Http::Response>(answer).body, "through the proxy");
    EXPECT_EQ(net.server.requests.first().host, QStringLiteral("www.bing.com"));
}

TEST_F(HttpLiveTest, UnderTestNoOtherMachineIsReached)
{
    EXPECT_FALSE(
        errorOf(get({.url = QUrl(QStringLiteral("https://www.bing.com/x")), .mostBytes = 1000})).isEmpty());
    EXPECT_EQ(net.server.connections, 0);
}

TEST_F(HttpLiveTest, AFetcherThatCannotBeStartedOrDiesIsAFailure)
{
    QtRunLoop loop;
    for (const char* program : {"/nonexistent/orvane-fetch", "/bin/false", "/bin/true"}) {
        FetcherHttp http(loop, QString::fromLatin1(program));
        std::optional<Http::Answer> answer;
        http.get({.url = net.url(QStringLiteral("/")), .mostBytes = 1},
                 [&](const Http::Answer& told) { answer = told; });
        ASSERT_TRUE(eventually(10s, [&] { return answer.has_value(); })) << program;
        EXPECT_EQ(errorOf(*answer), QStringLiteral("The connection ended without an answer.")) << program;
    }
}

TEST_F(HttpLiveTest, TheEndOfTheServiceEndsItsFetchers)
{
    net.replies.insert(QStringLiteral("/half"), {.body = QByteArray(1000, 'x'), .stallsAfter = 500});
    QtRunLoop loop;
    bool isTold = false;
    {
        FetcherHttp http(loop);
        http.get({.url = net.url(QStringLiteral("/half")), .mostBytes = 1000},
                 [&](const Http::Answer&) { isTold = true; });
        ASSERT_TRUE(eventually(20s, [&] { return !net.server.requests.isEmpty(); }));
    }
    EXPECT_TRUE(eventually(10s, [&] { return net.server.findChildren<QSslSocket*>().isEmpty(); }));
    EXPECT_FALSE(isTold);
}

} // namespace orvane::tests
