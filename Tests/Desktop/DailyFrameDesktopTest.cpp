// The daily wallpaper as a person has it: the services are a server of the test's, which the program finds by
// the desktop's proxy, and what counts is the desktop's pixels.
#include "Desktop/Support/ShellFixture.h"
#include "Platform/Protocols/FetchProtocol.h"
#include "Support/Eventually.h"
#include "Support/Https/HttpsServer.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QSslSocket>

#include <csignal>

namespace orvane::tests {

namespace {

constexpr QColor red(200, 30, 20);
constexpr QColor blue(20, 40, 210);
constexpr StoredShortcut controlOptionB{11, 0x1800};

QByteArray pictureOf(QColor color)
{
    QImage image(320, 200, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(buffer.open(QBuffer::WriteOnly) && image.save(&buffer, "PNG"));
    return bytes;
}

bool isNear(QColor one, QColor other)
{
    return qAbs(one.red() - other.red()) < 4 && qAbs(one.green() - other.green()) < 4 &&
           qAbs(one.blue() - other.blue()) < 4;
}

class DailyFrameDesktopTest : public ShellDesktopTest {
protected:
    DailyFrameDesktopTest()
    {
        server.onRequest = [this](const HttpsServer::Request& request) {
            return replies.value(request.path.section(u'?', 0, 0), {.status = 404});
        };
        offer({{1, red}, {2, blue}});
    }

    void TearDown() override
    {
        ShellDesktopTest::TearDown();
        QProcess::execute(QStringLiteral("xfconf-query"),
                          {QStringLiteral("-c"), QStringLiteral("xfce4-desktop"), QStringLiteral("-p"),
                           QStringLiteral("/backdrop"), QStringLiteral("-r"), QStringLiteral("-R")});
    }

    /// Has the service of photographs offer pictures of one colour, in this order.
    void offer(const QList<QPair<int, QColor>>& pictures)
    {
        QByteArrayList photographs;
        for (const auto& [number, color] : pictures) {
            const QString path = QStringLiteral("/%1.png").arg(number);
            photographs.append(R"({"urls":{"full":"https://images.example)" + path.toLatin1() + R"("}})");
            replies.insert(path, {.body = pictureOf(color)});
        }
        replies.insert(list, {.body = R"({"day":[)" + photographs.join(',') + "]}"});
    }

    void start()
    {
        const Stored stored{
            .enabled = {QStringLiteral("dailyframe")},
            .shortcuts = {{QStringLiteral("dailyframe.newWallpaper"), controlOptionB}},
            .more = {{QStringLiteral("net.lindenrow.orvane.dailyframe.source"), QStringLiteral("unsplash")}}};
        m_program = std::make_unique<Program>(
            Program::Start{.defaults = defaults(stored),
                           .environment = {{QStringLiteral("https_proxy"), server.proxy()},
                                           {QString::fromLatin1(FetchProtocol::testAuthorityVariable),
                                            certificates.authorityFile()}}});
        ASSERT_TRUE(m_program->waitUntilReady());
    }

    bool desktopShows(QColor color)
    {
        return eventually(20s, [&] {
            const QImage pixel = m_screen.picture(QRect(700, 450, 1, 1));
            return !pixel.isNull() && isNear(pixel.pixelColor(0, 0), color);
        });
    }
    bool isAsked(const QString& path, qsizetype times = 1)
    {
        return eventually(20s, [&] {
            return std::ranges::count_if(server.requests, [&path](const auto& request) {
                       return request.path.section(u'?', 0, 0) == path;
                   }) >= times;
        });
    }
    [[nodiscard]] QStringList kept() const
    {
        const QDir folder(m_program->home()->dataDirectory() + QStringLiteral("/DailyFrame"));
        return folder.entryList(QDir::Files, QDir::Name);
    }
    void askForAnother() { chord({"Control_L", "Alt_L", "b"}); }
    bool failureIsLogged(const QString& text)
    {
        return program().waitForLog(QRegularExpression(QRegularExpression::escape(text))).has_value();
    }

    const QString list = QStringLiteral("/backgrounds/bonjourr/images/daylight");
    QHash<QString, HttpsServer::Reply> replies;
    Certificates certificates{{QStringLiteral("services.bonjourr.fr"), QStringLiteral("images.example")}};
    HttpsServer server{certificates};
};

} // namespace

TEST_F(DailyFrameDesktopTest, TheStartAndTheShortcutPutPicturesOnTheDesktop)
{
    start();
    EXPECT_TRUE(desktopShows(red));
    EXPECT_EQ(kept(), QStringList{QStringLiteral("unsplash-https---images.example-1.png.png")});
    offer({{2, blue}});
    askForAnother();
    EXPECT_TRUE(desktopShows(blue));
    EXPECT_EQ(server.requests.first().host, QStringLiteral("services.bonjourr.fr"));
}

TEST_F(DailyFrameDesktopTest, WhatIsNoPictureLeavesTheDesktopAlone)
{
    start();
    ASSERT_TRUE(desktopShows(red));
    offer({{2, blue}});
    replies[QStringLiteral("/2.png")].body = "<html><body>Log in to the network</body></html>";
    askForAnother();
    EXPECT_TRUE(failureIsLogged(QStringLiteral("The wallpaper service returned an unexpected response.")));
    replies[QStringLiteral("/2.png")].body = pictureOf(blue).chopped(40);
    askForAnother();
    EXPECT_TRUE(isAsked(QStringLiteral("/2.png"), 2));
    EXPECT_TRUE(failureIsLogged(QStringLiteral("The wallpaper service returned an unexpected response.")));
    EXPECT_TRUE(desktopShows(red));
    EXPECT_EQ(kept(), QStringList{QStringLiteral("unsplash-https---images.example-1.png.png")});
    offer({{2, blue}});
    askForAnother();
    EXPECT_TRUE(desktopShows(blue)) << "the next change works";
}

TEST_F(DailyFrameDesktopTest, KilledDuringADownloadItLeavesNoFileAndNoFetcher)
{
    replies[QStringLiteral("/1.png")].stallsAfter = 100;
    start();
    ASSERT_TRUE(isAsked(QStringLiteral("/1.png")));
    program().kill9();
    EXPECT_TRUE(eventually(10s, [this] { return server.findChildren<QSslSocket*>().isEmpty(); }));
    EXPECT_TRUE(kept().isEmpty());
}

TEST_F(DailyFrameDesktopTest, ADownloadDoesNotHoldUpTheEnd)
{
    replies[QStringLiteral("/1.png")].stallsAfter = 100;
    start();
    ASSERT_TRUE(isAsked(QStringLiteral("/1.png")));
    program().signal(SIGTERM);
    const auto exit = program().wait();
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->code, 0);
    EXPECT_TRUE(eventually(10s, [this] { return server.findChildren<QSslSocket*>().isEmpty(); }));
}

} // namespace orvane::tests
