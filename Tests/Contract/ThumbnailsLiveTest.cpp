// Thumbnails from the cache that the desktop's programs share, and from a stand-in for its thumbnailer on the
// private session bus.
#include "Fakes/FakeLogSink.h"
#include "Support/Eventually.h"
#include "Support/ThumbnailFolder.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <atomic>
#include <functional>
#include <thread>

namespace orvane::tests {

namespace {

const QString service = QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1");
const QString object = QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1");

class StandIn : public QDBusVirtualObject {
public:
    StandIn()
    {
        EXPECT_TRUE(m_bus.registerVirtualObject(object, this));
        EXPECT_TRUE(m_bus.registerService(service));
    }
    ~StandIn() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override
    {
        if (message.member() != QStringLiteral("Queue") || message.signature() != QStringLiteral("asasssu"))
            return false;
        ++questions;
        arguments = message.arguments();
        if (!isSilent)
            (void)bus.send(message.createReply(handle));
        onQueue();
        return true;
    }
    void say(const QString& signal, const QVariantList& content)
    {
        QDBusMessage message = QDBusMessage::createSignal(object, service, signal);
        message.setArguments(content);
        EXPECT_TRUE(m_bus.send(message));
    }

    static constexpr uint handle = 7;
    bool isSilent = false;
    int questions = 0;
    QVariantList arguments;
    std::function<void()> onQueue = [] {};

private:
    QDBusConnection m_bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("thumbnailer-stand-in"));
};

class ThumbnailsLiveTest : public ::testing::Test {
protected:
    ThumbnailsLiveTest() { folder.addPicture(name, {400, 300}); }

    /// Asks on another thread, as this one answers for the thumbnailer.
    std::optional<Pictures::Pixels> ask(DesktopThumbnails& asked, const std::stop_token& stop = {})
    {
        std::optional<Pictures::Pixels> result;
        std::atomic<bool> isDone = false;
        std::thread asking([&] {
            result = asked.thumbnail(folder.path(name), {100, 100}, stop);
            isDone = true;
        });
        EXPECT_TRUE(eventually(60s, [&isDone] { return isDone.load(); }));
        asking.join();
        return result;
    }
    std::optional<Pictures::Pixels> ask() { return ask(thumbnails); }

    /// True for an entry of the cache, which is red, and false for what was made from the white picture.
    static bool isFromCache(const std::optional<Pictures::Pixels>& pixels)
    {
        EXPECT_TRUE(pixels);
        return pixels && pixels->bytes.startsWith(QByteArray("\xFF\0\0\xFF", 4));
    }
    [[nodiscard]] QStringList uris() const
    {
        return {QString::fromLatin1(ThumbnailCache::uriOf(folder.path(name)))};
    }

    const QString name = QStringLiteral("a b;ü%.png");
    ThumbnailFolder folder;
    FakeLogSink log;
    WorkerPictures pictures{log};
    DesktopThumbnails thumbnails{pictures, folder.cache(), 20s};
};

} // namespace

TEST_F(ThumbnailsLiveTest, AnEntryOfThePresentStateIsTaken)
{
    for (const char* flavour : {"xx-large", "normal"}) {
        folder.addEntry(name, {128, 96}, QLatin1String(flavour));
        const auto pixels = ask();
        EXPECT_TRUE(isFromCache(pixels)) << flavour;
        EXPECT_EQ(pixels->size, (Pictures::Size{100, 75}));
        QFile::remove(folder.entryOf(name, QLatin1String(flavour)));
    }
    EXPECT_FALSE(isFromCache(ask()));
}

TEST_F(ThumbnailsLiveTest, AnEntryOfAnotherStateAndOneThatIsNoEntryAreNot)
{
    folder.addEntry(name, {128, 96}, QStringLiteral("normal"), -1);
    EXPECT_FALSE(isFromCache(ask()));
    // Somebody may have put other files there.
    QFile entry(folder.entryOf(name, QStringLiteral("normal")));
    ASSERT_TRUE(entry.open(QFile::WriteOnly));
    entry.write("GIF89a Thumb::MTime");
    entry.close();
    EXPECT_FALSE(isFromCache(ask()));
    ASSERT_TRUE(entry.remove());
    ASSERT_TRUE(QDir().mkpath(entry.fileName()));
    EXPECT_FALSE(isFromCache(ask()));
}

TEST_F(ThumbnailsLiveTest, TheThumbnailerIsAskedForWhatTheCacheDoesNotHave)
{
    StandIn thumbnailer;
    thumbnailer.onQueue = [&] {
        thumbnailer.say(QStringLiteral("Ready"), {9U, QStringList{QStringLiteral("file:///other")}});
        folder.addEntry(name, {128, 96}, QStringLiteral("normal"));
        thumbnailer.say(QStringLiteral("Ready"), {StandIn::handle, uris()});
        thumbnailer.say(QStringLiteral("Finished"), {StandIn::handle});
    };
    EXPECT_TRUE(isFromCache(ask()));
    ASSERT_EQ(thumbnailer.arguments.size(), 5);
    EXPECT_EQ(thumbnailer.arguments[0].toStringList(), uris());
    EXPECT_EQ(thumbnailer.arguments[1].toStringList(), QStringList{QStringLiteral("image/png")});
    EXPECT_EQ(thumbnailer.arguments[2].toString(), QStringLiteral("normal"));
    EXPECT_TRUE(isFromCache(ask()));
    EXPECT_EQ(thumbnailer.questions, 1);
}

TEST_F(ThumbnailsLiveTest, AThumbnailerThatCannotIsAskedAgainForTheNext)
{
    StandIn thumbnailer;
    thumbnailer.onQueue = [&] {
        thumbnailer.say(QStringLiteral("Error"),
                        {StandIn::handle, uris(), 0, QStringLiteral("no thumbnailer for this type")});
    };
    EXPECT_FALSE(isFromCache(ask()));
    thumbnailer.onQueue = [&] { thumbnailer.say(QStringLiteral("Finished"), {StandIn::handle}); };
    EXPECT_FALSE(isFromCache(ask()));
    EXPECT_EQ(thumbnailer.questions, 2);
}

TEST_F(ThumbnailsLiveTest, ASilentThumbnailerIsLeftAloneAfterTheTimeLimit)
{
    StandIn thumbnailer;
    thumbnailer.isSilent = true;
    DesktopThumbnails hurried(pictures, folder.cache(), 200ms);
    EXPECT_FALSE(isFromCache(ask(hurried)));
    EXPECT_TRUE(eventually(20s, [&thumbnailer] { return thumbnailer.questions == 1; }));
    EXPECT_FALSE(isFromCache(ask(hurried)));
    EXPECT_EQ(thumbnailer.questions, 1);
}

TEST_F(ThumbnailsLiveTest, AStopAndGivingUpEndTheQuestion)
{
    StandIn thumbnailer;
    thumbnailer.isSilent = true;
    DesktopThumbnails patient(pictures, folder.cache(), 600s);
    std::stop_source stop;
    thumbnailer.onQueue = [&stop] { stop.request_stop(); };
    EXPECT_FALSE(ask(patient, stop.get_token()));
    patient.giveUp();
    EXPECT_FALSE(isFromCache(ask(patient))); // the worker is still asked
    EXPECT_EQ(thumbnailer.questions, 1);
}

} // namespace orvane::tests
