// The clipboard among other programs: their formats and their faults.
#include "Contract/Support/SelectionAsker.h"
#include "Contract/Support/SelectionOwner.h"
#include "Desktop/Support/Peer.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/Pasteboard/X11Pasteboard.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "Support/Eventually.h"

#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>

#include <cstring>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

using Manner = SelectionOwner::Manner;
using ::testing::Contains;
using ::testing::Not;

const QString string{pasteboardType::string};
const QString png{pasteboardType::png};

QByteArray pngStart()
{
    return QByteArrayLiteral("\x89PNG\r\n\x1A\n");
}

QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    std::uint32_t state = 1;
    for (char& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<char>(state >> 24);
    }
    return bytes;
}

QByteArray picture(const char* format)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return buffer.data();
}

/// The run loop, with a pool whose work is held until the test lets it go.
class HeldPool : public QtRunLoop {
public:
    void performDetached(std::function<void()> work) override
    {
        const std::scoped_lock lock(m_mutex);
        m_held.push_back(std::move(work));
    }
    [[nodiscard]] std::size_t held()
    {
        const std::scoped_lock lock(m_mutex);
        return m_held.size();
    }
    void release()
    {
        const std::scoped_lock lock(m_mutex);
        for (auto& work : std::exchange(m_held, {}))
            QtRunLoop::performDetached(std::move(work));
    }

private:
    std::mutex m_mutex;
    std::vector<std::function<void()>> m_held;
};

class PasteboardLiveTest : public ::testing::Test {
protected:
    PasteboardLiveTest() { (void)read({}); } // changes of owner are announced from then on

    struct Reading {
        bool isCompleted = false;
        std::optional<PasteboardContents> contents;
        std::unique_ptr<PasteboardRead> token;
    };
    std::unique_ptr<Reading> begin(const QStringList& types)
    {
        auto reading = std::make_unique<Reading>();
        reading->token =
            pasteboard.read(types, [to = reading.get()](std::optional<PasteboardContents> contents) {
                EXPECT_FALSE(to->isCompleted);
                to->isCompleted = true;
                to->contents = std::move(contents);
            });
        return reading;
    }
    std::optional<PasteboardContents> read(const QStringList& types)
    {
        const auto reading = begin(types);
        EXPECT_TRUE(eventually(40s, [&] {
            runLoop.release();
            return reading->isCompleted;
        }));
        return reading->contents;
    }
    /// Waits for the announcement of another program's next copy.
    void expectCount(int count)
    {
        EXPECT_TRUE(eventually(10s, [&] { return pasteboard.changeCount() == count; }));
    }
    void write(const QString& text)
    {
        pasteboard.clearContents();
        // NOLINTNEXTLINE(readability-suspicious-call-argument): the second is the name of a type.
        pasteboard.setString(text, string);
        finishCopy();
    }
    /// Lets others see the copy, which a thread announces to the server.
    void finishCopy()
    {
        (void)read({});
        EXPECT_TRUE(asker.awaitOtherOwner(ownerBefore));
    }

    FakeLogSink log;
    HeldPool runLoop;
    SelectionAsker asker;
    const xcb_window_t ownerBefore = asker.owner();
    X11Pasteboard pasteboard{log, runLoop};
};

} // namespace

TEST_F(PasteboardLiveTest, HasNoThreadBeforeTheFirstQuestion)
{
    const auto threads = [] {
        return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    };
    const auto before = threads();
    const X11Pasteboard unasked(log, runLoop);
    EXPECT_EQ(threads(), before);
    EXPECT_GE(unasked.changeCount(), 0);
    // Besides, a thread connects to the X server, and ends then.
    EXPECT_TRUE(eventually(10s, [&] { return threads() == before + 1; }));
}

TEST_F(PasteboardLiveTest, ReadsAFormattedCopy)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"UTF8_STRING", "bold"},
                                {"STRING", "bold"},
                                {"text/html", QByteArray("\xFF\xFE<\0b\0>\0", 8)},
                                {"text/rtf", "{\\rtf1 bold}"},
                                {"text/x-moz-url", QByteArray("h\0:\0/\0\n\0t\0", 10)},
                                {"org.nspasteboard.TransientType", ""}},
                               Manner::whole);
    expectCount(before + 1);
    const auto contents = read({string, pasteboardType::html, pasteboardType::rtf, pasteboardType::url});
    ASSERT_TRUE(contents);
    EXPECT_THAT(contents->types,
                ::testing::UnorderedElementsAre(string, QString(pasteboardType::html),
                                                QString(pasteboardType::rtf), QString(pasteboardType::url),
                                                QStringLiteral("org.nspasteboard.TransientType")));
    EXPECT_EQ(contents->stringForType(string), QStringLiteral("bold"));
    EXPECT_EQ(contents->stringForType(pasteboardType::html), QStringLiteral("<b>"));
    EXPECT_EQ(contents->dataForType(pasteboardType::rtf), "{\\rtf1 bold}");
    EXPECT_EQ(contents->stringForType(pasteboardType::url), QStringLiteral("h:/"));
}

TEST_F(PasteboardLiveTest, TakesAListOfWebAddressesForALink)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"text/uri-list", "https://example.org/a\r\n"}}, Manner::whole);
    expectCount(before + 1);
    const auto contents = read({pasteboardType::url, pasteboardType::fileURL});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->types, QStringList{pasteboardType::url});
    EXPECT_EQ(contents->stringForType(pasteboardType::url), QStringLiteral("https://example.org/a"));
    EXPECT_TRUE(contents->fileURLs.isEmpty());
}

TEST_F(PasteboardLiveTest, ASecretOfAPasswordManagerIsConcealed)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner secret({{"UTF8_STRING", "x"}, {"x-kde-passwordManagerHint", "secret"}},
                                Manner::whole);
    expectCount(before + 1);
    auto contents = read({});
    ASSERT_TRUE(contents);
    EXPECT_THAT(contents->types, Contains(QStringLiteral("org.nspasteboard.ConcealedType")));
    const SelectionOwner open({{"UTF8_STRING", "x"}, {"x-kde-passwordManagerHint", "public"}}, Manner::whole);
    expectCount(before + 2);
    contents = read({});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->types, QStringList{string});
}

TEST_F(PasteboardLiveTest, AnotherPictureIsReadAsPng)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"image/bmp", picture("BMP")}}, Manner::whole);
    expectCount(before + 1);
    const auto contents = read({png});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->types, QStringList{png});
    const QImage image = QImage::fromData(contents->dataForType(png).value_or(QByteArray()), "PNG");
    EXPECT_EQ(image.size(), QSize(40, 30));
    EXPECT_EQ(image.pixelColor(20, 10), QColor(Qt::red));
}

TEST_F(PasteboardLiveTest, AnOwnCopyDoesNotWaitForAPictureThatIsBeingConverted)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"image/bmp", picture("BMP")}}, Manner::whole);
    expectCount(before + 1);
    const auto converting = begin({png});
    ASSERT_TRUE(eventually(10s, [&] { return runLoop.held() == 1; }));
    const xcb_window_t other = asker.owner();
    pasteboard.clearContents();
    pasteboard.setString(QStringLiteral("chosen"), string);
    const auto handing = begin({});
    EXPECT_TRUE(eventually(10s, [&] { return handing->isCompleted; }));
    EXPECT_NE(asker.owner(), other);
    EXPECT_EQ(asker.ask("UTF8_STRING"), "chosen");
    EXPECT_FALSE(converting->isCompleted);

    runLoop.release();
    EXPECT_TRUE(eventually(10s, [&] { return converting->isCompleted; }));
    ASSERT_TRUE(converting->contents);
    EXPECT_EQ(converting->contents->changeCount, before + 1) << "that of the picture";
    EXPECT_TRUE(converting->contents->data.contains(png));
}

TEST_F(PasteboardLiveTest, AnEndedReadOfAPictureDoesNotComplete)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"image/bmp", picture("BMP")}}, Manner::whole);
    expectCount(before + 1);
    const auto reading = begin({png});
    ASSERT_TRUE(eventually(10s, [&] { return runLoop.held() == 1; }));
    reading->token.reset();
    runLoop.release();
    (void)read({});
    EXPECT_FALSE(reading->isCompleted);
}

TEST_F(PasteboardLiveTest, ReadsWhatComesInPieces)
{
    const QByteArray large = noise(5'000'000);
    for (const qsizetype pieceSize : {4096, 262'144, 3'000'000}) {
        const int before = pasteboard.changeCount();
        const SelectionOwner owner({{"image/png", large}, {"UTF8_STRING", "small"}}, Manner::pieces,
                                   pieceSize);
        expectCount(before + 1);
        const auto contents = read({png, string});
        ASSERT_TRUE(contents);
        EXPECT_TRUE(contents->dataForType(png) == large);
        EXPECT_EQ(contents->stringForType(string), QStringLiteral("small"));
    }
}

TEST_F(PasteboardLiveTest, AProgramThatTellsNoTargetsStillGivesItsText)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"STRING", "gr\xFC\xDF"}}, Manner::withoutTargets);
    expectCount(before + 1);
    const auto contents = read({string});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->types, QStringList{string});
    EXPECT_EQ(contents->stringForType(string), QStringLiteral("gr\u00FC\u00DF"));
}

TEST_F(PasteboardLiveTest, AnOwnerThatNeverAnswersCompletesTheReadWithNothing)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"UTF8_STRING", "x"}}, Manner::silent);
    expectCount(before + 1);
    EXPECT_FALSE(read({string}));
    // The next one is read as usual.
    const SelectionOwner next({{"UTF8_STRING", "y"}}, Manner::whole);
    expectCount(before + 2);
    const auto contents = read({string});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->stringForType(string), QStringLiteral("y"));
}

TEST_F(PasteboardLiveTest, AnOwnerThatStopsMidwayCompletesTheReadWithNothing)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"UTF8_STRING", noise(300'000)}}, Manner::stopsMidway);
    expectCount(before + 1);
    EXPECT_FALSE(read({string}));
}

TEST_F(PasteboardLiveTest, AnOwnerThatDiesMidwayLeavesNothing)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"UTF8_STRING", noise(300'000)}}, Manner::diesMidway);
    expectCount(before + 1);
    const auto contents = read({string});
    EXPECT_EQ(owner.piecesSent(), 1);
    ASSERT_TRUE(contents);
    EXPECT_TRUE(contents->types.isEmpty());
    EXPECT_EQ(contents->changeCount, before + 1);
}

TEST_F(PasteboardLiveTest, AFlavourThatIsTakenBackIsPassedOver)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"UTF8_STRING", "x"}, {"text/html", "<b>"}}, Manner::takesItBack);
    expectCount(before + 1);
    const auto contents = read({string, pasteboardType::html});
    ASSERT_TRUE(contents);
    EXPECT_TRUE(contents->data.isEmpty());
}

TEST_F(PasteboardLiveTest, TooMuchCompletesTheReadWithNothing)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"UTF8_STRING", QByteArray(200'000'000, 'x')}}, Manner::pieces, 1'000'000);
    expectCount(before + 1);
    EXPECT_FALSE(read({string}));
    EXPECT_LE(owner.piecesSent(), 70);
}

TEST_F(PasteboardLiveTest, AnEndedReadLeavesTheOwnerAlone)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner hung({{"UTF8_STRING", "x"}}, Manner::silent);
    expectCount(before + 1);
    auto reading = begin({string});
    EXPECT_TRUE(eventually(10s, [&] { return hung.requests() > 0; }));
    reading->token.reset();
    const SelectionOwner next({{"UTF8_STRING", "y"}}, Manner::whole);
    expectCount(before + 2);
    const auto contents = read({string});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->stringForType(string), QStringLiteral("y"));
    EXPECT_FALSE(reading->isCompleted);
}

TEST_F(PasteboardLiveTest, ACopyDuringAReadIsWhatIsRead)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner hung({{"UTF8_STRING", "old"}}, Manner::silent);
    expectCount(before + 1);
    const auto reading = begin({string});
    EXPECT_TRUE(eventually(10s, [&] { return hung.requests() > 0; }));
    const SelectionOwner next({{"UTF8_STRING", "new"}}, Manner::whole);
    EXPECT_TRUE(eventually(10s, [&] { return reading->isCompleted; }));
    ASSERT_TRUE(reading->contents);
    EXPECT_EQ(reading->contents->stringForType(string), QStringLiteral("new"));
    EXPECT_EQ(reading->contents->changeCount, before + 2);
}

TEST_F(PasteboardLiveTest, AnOwnCopyDuringAReadIsWhatIsRead)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner hung({{"UTF8_STRING", "old"}}, Manner::silent);
    expectCount(before + 1);
    const auto reading = begin({string});
    EXPECT_TRUE(eventually(10s, [&] { return hung.requests() > 0; }));
    EXPECT_EQ(pasteboard.clearContents(), before + 2);
    pasteboard.setString(QStringLiteral("own"), string);
    EXPECT_TRUE(eventually(10s, [&] { return reading->isCompleted; }));
    ASSERT_TRUE(reading->contents);
    EXPECT_EQ(reading->contents->stringForType(string), QStringLiteral("own"));
    EXPECT_EQ(reading->contents->changeCount, before + 2);
}

TEST_F(PasteboardLiveTest, EverythingGoesOnBesideAnOwnerThatHangs)
{
    const int before = pasteboard.changeCount();
    const SelectionOwner owner({{"UTF8_STRING", "x"}}, Manner::silent);
    expectCount(before + 1);
    QElapsedTimer timer;
    qint64 longest = 0;
    const auto measure = [&](auto operation) {
        timer.start();
        operation();
        longest = std::max(longest, timer.nsecsElapsed());
    };
    std::vector<std::unique_ptr<Reading>> readings;
    measure([&] { readings.push_back(begin({string})); });
    EXPECT_TRUE(eventually(10s, [&] { return owner.requests() > 0; }));
    measure([&] { readings.push_back(begin({string})); });
    measure([&] { readings.pop_back(); });
    const xcb_window_t hanging = asker.owner();
    measure([&] { EXPECT_EQ(pasteboard.clearContents(), before + 2); });
    measure([&] { EXPECT_TRUE(pasteboard.setString(QStringLiteral("own"), string)); });
    measure([&] { EXPECT_EQ(pasteboard.changeCount(), before + 2); });
    RecordProperty("longestMicroseconds", static_cast<int>(longest / 1000)); // of the main thread
    EXPECT_TRUE(asker.awaitOtherOwner(hanging));
    EXPECT_EQ(asker.ask("UTF8_STRING"), "own");
}

TEST_F(PasteboardLiveTest, QtsOwnClipboardIsReadLikeThatOfAnotherProgram)
{
    const int before = pasteboard.changeCount();
    QGuiApplication::clipboard()->setText(QStringLiteral("from a field of ours"));
    expectCount(before + 1);
    const auto contents = read({string});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->stringForType(string), QStringLiteral("from a field of ours"));
}

TEST_F(PasteboardLiveTest, QtsOwnClipboardReadsWhatIsWritten)
{
    write(QStringLiteral("gr\u00FC\u00DFe"));
    EXPECT_TRUE(eventually(
        10s, [] { return QGuiApplication::clipboard()->text() == QStringLiteral("gr\u00FC\u00DFe"); }));
    write(QStringLiteral("again"));
    EXPECT_TRUE(
        eventually(10s, [] { return QGuiApplication::clipboard()->text() == QStringLiteral("again"); }));
}

TEST_F(PasteboardLiveTest, OffersEachFlavour)
{
    pasteboard.clearContents();
    pasteboard.setString(QStringLiteral("gr\u00FC\u00DF"), string);
    pasteboard.setData("<b>", pasteboardType::html);
    pasteboard.writeObjects(QList{QUrl::fromLocalFile(QStringLiteral("/tmp/a b")),
                                  QUrl::fromLocalFile(QStringLiteral("/tmp/c"))});
    pasteboard.setData({}, QStringLiteral("org.nspasteboard.ConcealedType"));
    finishCopy();
    const auto targets = asker.targets();
    for (const char* target :
         {"TARGETS", "TIMESTAMP", "MULTIPLE", "UTF8_STRING", "text/uri-list", "text/html"})
        EXPECT_THAT(targets, Contains(QByteArray(target)));
    EXPECT_THAT(targets, Not(Contains(QByteArray("image/png"))));
    EXPECT_EQ(asker.ask("UTF8_STRING"), "gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(asker.ask("STRING"), "gr\xFC\xDF");
    EXPECT_EQ(asker.ask("text/plain;charset=utf-8"), "gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(asker.ask("text/html"), "<b>");
    EXPECT_EQ(asker.ask("text/uri-list"), "file:///tmp/a%20b\r\nfile:///tmp/c\r\n");
    for (const char* target : {"x-special/gnome-copied-files", "x-special/mate-copied-files"})
        EXPECT_EQ(asker.ask(target), "copy\nfile:///tmp/a%20b\nfile:///tmp/c") << target;
    EXPECT_EQ(asker.ask("x-kde-passwordManagerHint"), "secret");
    EXPECT_EQ(asker.ask("image/png"), std::nullopt);
}

TEST_F(PasteboardLiveTest, AfterAReadOthersGetTheOwnCopy)
{
    for (int round = 0; round < 20; ++round) {
        const int before = pasteboard.changeCount();
        const SelectionOwner other({{"UTF8_STRING", "other"}}, Manner::whole);
        expectCount(before + 1);
        const xcb_window_t owner = asker.owner();
        pasteboard.clearContents();
        pasteboard.setString(QStringLiteral("own"), string);
        (void)read({});
        EXPECT_NE(asker.owner(), owner);
    }
}

TEST_F(PasteboardLiveTest, AnswersSeveralTargetsInOneRequest)
{
    const QByteArray large = pngStart() + noise(2'000'000);
    pasteboard.clearContents();
    pasteboard.setString(QStringLiteral("text"), string);
    pasteboard.writeObjects(PasteboardImage{large});
    finishCopy();
    const auto answers = asker.askMultiple({"UTF8_STRING", "text/html", "image/png"});
    ASSERT_EQ(answers.size(), 3);
    EXPECT_EQ(answers[0], "text");
    EXPECT_EQ(answers[1], std::nullopt);
    EXPECT_TRUE(answers[2] == large);
}

TEST_F(PasteboardLiveTest, LargeContentGoesInPiecesToSeveralAtOnce)
{
    const QByteArray large = pngStart() + noise(3'000'000);
    pasteboard.clearContents();
    pasteboard.writeObjects(PasteboardImage{large});
    finishCopy();
    SelectionAsker first, second;
    first.begin("image/png");
    second.begin("image/png");
    {
        SelectionAsker gone;
        gone.begin("image/png");
        EXPECT_TRUE(gone.isAnswered());
    }
    EXPECT_TRUE(first.isAnswered());
    EXPECT_TRUE(second.isAnswered());
    EXPECT_TRUE(second.rest() == large);
    EXPECT_TRUE(second.cameInPieces());
    EXPECT_TRUE(first.rest() == large);
}

TEST_F(PasteboardLiveTest, ARequestFromBeforeTheCopyIsRefused)
{
    write(QStringLiteral("text"));
    const auto since = asker.ask("TIMESTAMP");
    ASSERT_TRUE(since);
    ASSERT_EQ(since->size(), 4);
    std::uint32_t time = 0;
    std::memcpy(&time, since->constData(), sizeof time);
    EXPECT_EQ(asker.ask("UTF8_STRING", time - 10), std::nullopt);
    EXPECT_EQ(asker.ask("UTF8_STRING", time), "text");
}

TEST_F(PasteboardLiveTest, ABusyMainThreadHoldsNobody)
{
    pasteboard.clearContents();
    pasteboard.setString(QStringLiteral("text"), string);
    // No event is handled here until the answer has come.
    ASSERT_TRUE(asker.awaitOtherOwner(ownerBefore));
    EXPECT_EQ(asker.ask("UTF8_STRING"), "text");
}

TEST_F(PasteboardLiveTest, RealProgramsReadAndWrite)
{
    write(QStringLiteral("for xclip"));
    EXPECT_EQ(clipboardText(), QStringLiteral("for xclip"));
    const int before = pasteboard.changeCount();
    setClipboardText(QStringLiteral("from xclip"));
    expectCount(before + 1);
    const auto contents = read({string});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->stringForType(string), QStringLiteral("from xclip"));
}

TEST_F(PasteboardLiveTest, NothingIsLogged)
{
    write(QStringLiteral("text"));
    EXPECT_TRUE(log.entries().empty());
}

} // namespace orvane::tests
