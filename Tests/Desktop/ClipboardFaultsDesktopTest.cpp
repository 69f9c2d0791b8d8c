// The clipboard history among programs that misbehave, and with damaged files: it goes on and loses nothing
// that it had.
#include "Contract/Support/SelectionOwner.h"
#include "Desktop/Support/ClipboardFixture.h"
#include "Desktop/Support/Peer.h"
#include "Support/Eventually.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <gmock/gmock.h>

#include <csignal>

#include <sys/resource.h>

namespace orvane::tests {
namespace {

using Manner = SelectionOwner::Manner;

QByteArray entry(const QByteArray& number, const QByteArray& text)
{
    return R"({"id":"00000000-0000-0000-0000-)" + number.rightJustified(12, '0') +
           R"(","kind":"text","text":")" + text + R"(","date":700000000.5,"pinned":false})";
}

/// Two entries, as an earlier run may have left them.
QByteArray twoEntries()
{
    return "[" + entry("1", "first") + "," + entry("2", "second") + "]";
}

/// Returns the megabytes of memory that a process alone has and has written to.
double privateDirtyMemory(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("Private_Dirty:"))
            return line.mid(14).trimmed().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

class ClipboardFaultsDesktopTest : public ClipboardFixture {
protected:
    /// Starts the program with this in the history's file.
    void startWith(const QByteArray& json)
    {
        const auto home = std::make_shared<PrivateHome>();
        QDir().mkpath(historyFolder(*home));
        QFile file(historyFolder(*home) + QStringLiteral("/history.json"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(json) == json.size());
        file.close();
        startHistory({.home = home});
    }
    void expectItGoesOn(QStringList before)
    {
        copy(QStringLiteral("afterwards"));
        before.prepend(QStringLiteral("text:afterwards"));
        EXPECT_EQ(storedEntries(), before);
        EXPECT_TRUE(program().isRunning());
    }
    /// Expects that a program with two entries goes on while this one owns the clipboard.
    void expectItSurvives(const QMap<QByteArray, QByteArray>& data, Manner manner)
    {
        startWith(twoEntries());
        const SelectionOwner owner(data, manner, qsizetype{256} << 10);
        ASSERT_TRUE(eventually(
            10s, [&] { return manner == Manner::silent ? owner.requests() > 0 : owner.piecesSent() > 0; }));
        expectItGoesOn({QStringLiteral("text:first"), QStringLiteral("text:second")});
    }
    /// Expects what the program reads from a file; it goes on in any case.
    void expectReads(const QByteArray& json, const QStringList& entries)
    {
        startWith(json);
        expectItGoesOn(entries);
    }
};

} // namespace

TEST_F(ClipboardFaultsDesktopTest, AnOwnerThatNeverAnswersIsGivenUp)
{
    expectItSurvives({{"UTF8_STRING", "text"}}, Manner::silent);
}

TEST_F(ClipboardFaultsDesktopTest, AnOwnerThatStopsInTheMiddleIsGivenUp)
{
    expectItSurvives({{"UTF8_STRING", QByteArray(1 << 20, 'x')}}, Manner::stopsMidway);
}

TEST_F(ClipboardFaultsDesktopTest, AnOwnerThatDiesInTheMiddleIsPassedOver)
{
    expectItSurvives({{"UTF8_STRING", QByteArray(1 << 20, 'x')}}, Manner::diesMidway);
}

TEST_F(ClipboardFaultsDesktopTest, OfAnOwnerOf200MegabytesNoneIsKept)
{
    startWith(twoEntries());
    {
        const SelectionOwner owner({{"UTF8_STRING", QByteArray(200 << 20, 'x')}}, Manner::pieces, 1 << 20);
        // The program doesn't read more than 64 MiB; the last piece that was asked for lies around that.
        int pieces = 0;
        ASSERT_TRUE(eventually(60s, [&] { return (pieces = owner.piecesSent()) >= 64; })) << pieces;
        copy(QStringLiteral("in between"));
        EXPECT_LT(owner.piecesSent(), 70);
    }
    expectItGoesOn(
        {QStringLiteral("text:in between"), QStringLiteral("text:first"), QStringLiteral("text:second")});
}

TEST_F(ClipboardFaultsDesktopTest, ATruncatedFileBeginsAnEmptyList)
{
    expectReads(twoEntries().chopped(40), {});
}

TEST_F(ClipboardFaultsDesktopTest, AFileOf25MegabytesIsReadWhole)
{
    // In memory twice as much, which is still within what all texts together may take.
    QByteArray json("[");
    const QByteArray text(5000, 'x');
    int count = 0;
    for (; json.size() < (25 << 20); ++count)
        json += entry(QByteArray::number(count), QByteArray::number(count) + text) + ",";
    json.back() = ']';
    const auto home = std::make_shared<PrivateHome>();
    QDir().mkpath(historyFolder(*home));
    QFile file(historyFolder(*home) + QStringLiteral("/history.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(json) == json.size());
    file.close();
    startHistory({.settings = {{QStringLiteral("maxItems"), 1'000'000}}, .home = home});
    setClipboardText(QStringLiteral("afterwards"));
    EXPECT_TRUE(eventually(60s, [&] { return stored().size() == count + 1; })) << stored().size();
    EXPECT_EQ(storedEntries().value(0), QStringLiteral("text:afterwards"));
}

TEST_F(ClipboardFaultsDesktopTest, HostileStringsAreTextsLikeOthers)
{
    const QByteArray json = "[" + entry("1", R"(\u0000\u202e<b>\ud83d\ude00</b>)") + "," +
                            entry("2", "../../etc/passwd") + "," + entry("3", R"(%s%n {\"a\":1})") + "]";
    startWith(json);
    copy(QStringLiteral("afterwards"));
    const QStringList entries = storedEntries();
    ASSERT_EQ(entries.size(), 4);
    EXPECT_EQ(entries[1],
              QStringLiteral("text:") + QChar(0) + QChar(0x202e) + QStringLiteral("<b>\U0001F600</b>"));
    EXPECT_EQ(entries[2], QStringLiteral("text:../../etc/passwd"));
    EXPECT_EQ(entries[3], QStringLiteral("text:%s%n {\"a\":1}"));
    ASSERT_TRUE(openPanel());
    EXPECT_EQ(rows().size(), 4);
}

TEST_F(ClipboardFaultsDesktopTest, AnImageNameThatLeadsElsewhereIsNotFollowed)
{
    const auto home = std::make_shared<PrivateHome>();
    QDir().mkpath(historyFolder(*home));
    const QString elsewhere = home->path() + QStringLiteral("/elsewhere.png");
    QImage image(10, 10, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(elsewhere, "PNG"));
    QFile file(historyFolder(*home) + QStringLiteral("/history.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[{\"id\":\"00000000-0000-0000-0000-000000000001\",\"kind\":\"image\",\"imageFileName\":"
               "\"../../../../elsewhere.png\",\"date\":700000000,\"pinned\":false}]");
    file.close();
    startHistory({.home = home});
    copy(QStringLiteral("afterwards"));
    EXPECT_TRUE(QFile::exists(elsewhere));
    EXPECT_TRUE(program().isRunning());
}

TEST_F(ClipboardFaultsDesktopTest, AFileThatCantBeReadBeginsAnEmptyList)
{
    // Root reads a file whatever its mode, so the history is put where nobody can read it.
    const auto home = std::make_shared<PrivateHome>();
    const QString inTheWay = historyFolder(*home) + QStringLiteral("/history.json/inside");
    QDir().mkpath(inTheWay);
    startHistory({.home = home});
    ASSERT_TRUE(openPanel());
    setClipboardText(QStringLiteral("afterwards"));
    EXPECT_TRUE(rowsBecome({QStringLiteral("afterwards")}));
    EXPECT_TRUE(QDir(inTheWay).exists());
}

TEST_F(ClipboardFaultsDesktopTest, TheMemoryOfLargeCopiesGoesBackToTheSystem)
{
    startWith(twoEntries());
    copy(QStringLiteral("small"));
    const double before = privateDirtyMemory(program().pid());
    ASSERT_GT(before, 0);
    const QByteArray large(45'000'000, 'x');
    constexpr qsizetype pieceSize = 1'000'000;
    for (const char* next : {"one", "two", "three"}) {
        const SelectionOwner owner({{"UTF8_STRING", large}}, Manner::pieces, pieceSize);
        // The last piece is followed by an empty one.
        ASSERT_TRUE(eventually(20s, [&] { return owner.piecesSent() >= large.size() / pieceSize + 1; }));
        copy(QLatin1StringView(next));
    }
    EXPECT_TRUE(eventually(10s, [&] { return privateDirtyMemory(program().pid()) < before + 10; }))
        << before << " MB before, " << privateDirtyMemory(program().pid()) << " MB after";
}

TEST_F(ClipboardFaultsDesktopTest, WhenNothingMoreCanBeWrittenTheListOnTheDiskStaysWhole)
{
    // A limit to the size of files acts like a full disk. The signal of that limit ends a program that
    // doesn't ignore it, and an ignored signal stays ignored in the program that is started.
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    startWith(twoEntries());
    std::signal(SIGXFSZ, before);
    copy(QStringLiteral("small"));
    constexpr rlim_t limit = 2000;
    const rlimit small{limit, RLIM_INFINITY};
    ASSERT_EQ(::prlimit(static_cast<pid_t>(program().pid()), RLIMIT_FSIZE, &small, nullptr), 0);
    const QString large(5000, QLatin1Char('x'));
    setClipboardText(large);
    ASSERT_TRUE(openPanel());
    ASSERT_TRUE(eventually(10s, [&] { return rows().size() == 4; })) << rows().size() << " rows";
    EXPECT_EQ(storedEntries(), (QStringList{QStringLiteral("text:small"), QStringLiteral("text:first"),
                                            QStringLiteral("text:second")}));
    // Once there is room again, the next change brings all of it to the disk.
    const rlimit none{RLIM_INFINITY, RLIM_INFINITY};
    ASSERT_EQ(::prlimit(static_cast<pid_t>(program().pid()), RLIMIT_FSIZE, &none, nullptr), 0);
    copy(QStringLiteral("afterwards"));
    EXPECT_EQ(storedEntries().value(1), QStringLiteral("text:") + large);
    EXPECT_EQ(storedEntries().size(), 5);
}

TEST_F(ClipboardFaultsDesktopTest, PicturesThatAreDeletedBehindItsBackCostNothingElse)
{
    startHistory();
    copy(QStringLiteral("text"));
    const SelectionOwner owner(
        {{"image/png", QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+"
                                              "M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==")}},
        Manner::whole);
    ASSERT_TRUE(historyBecomes({QStringLiteral("image:"), QStringLiteral("text:text")}));
    for (const QString& name : QDir(imagesFolder()).entryList(QDir::Files))
        ASSERT_TRUE(QFile::remove(imagesFolder() + QLatin1Char('/') + name));
    ASSERT_TRUE(openPanel());
    EXPECT_EQ(rows().size(), 2);
    m_hardware.tap("Return");
    ASSERT_TRUE(panelCloses());
    EXPECT_TRUE(eventually(10s, [] { return clipboardText().isEmpty(); }));
    expectItGoesOn({QStringLiteral("image:"), QStringLiteral("text:text")});
}

} // namespace orvane::tests
