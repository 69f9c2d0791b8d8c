#include "Contract/Support/SelectionOwner.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakeLogSink.h"
#include "Fakes/FakePasteboard.h"
#include "Fakes/FakeRunLoop.h"
#include "PlatformLinux/Pasteboard/PasteboardFormats.h"
#include "PlatformLinux/Pasteboard/X11Pasteboard.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

const QString string{pasteboardType::string};
const QString png{pasteboardType::png};
const QString fileURL{pasteboardType::fileURL};
const QByteArray pngBytes = QByteArrayLiteral("\x89PNG\r\n\x1A\n...");

/// A pasteboard, another program beside it, and the run loop.
class Subject {
public:
    virtual ~Subject() = default;
    virtual Pasteboard& pasteboard() = 0;
    virtual void copyElsewhere(const QByteArray& text, const QList<QUrl>& files) = 0;
    virtual void endOtherProgram() = 0;
    virtual bool runUntil(const std::function<bool()>& condition) = 0;
    /// Runs what was queued up to now, and waits until what other programs have done is known.
    virtual void settle() = 0;
};

class FakeSubject : public Subject {
public:
    Pasteboard& pasteboard() override { return m_pasteboard; }
    void copyElsewhere(const QByteArray& text, const QList<QUrl>& files) override
    {
        PasteboardContents contents;
        if (!text.isNull())
            contents.data.insert(string, text);
        contents.fileURLs = files;
        m_pasteboard.copy(std::move(contents));
    }
    void endOtherProgram() override {}
    bool runUntil(const std::function<bool()>& condition) override
    {
        m_runLoop.drain();
        return condition();
    }
    void settle() override { m_runLoop.drain(); }

private:
    FakeClock m_clock;
    FakeRunLoop m_runLoop{m_clock};
    FakePasteboard m_pasteboard{m_runLoop};
};

class LinuxSubject : public Subject {
public:
    LinuxSubject() { settle(); }
    Pasteboard& pasteboard() override { return m_pasteboard; }
    void copyElsewhere(const QByteArray& text, const QList<QUrl>& files) override
    {
        QMap<QByteArray, QByteArray> data;
        if (!text.isNull())
            data.insert("UTF8_STRING", text);
        if (!files.isEmpty())
            data.insert("text/uri-list", encodeUriList(files));
        auto next = std::make_unique<SelectionOwner>(data, SelectionOwner::Manner::whole);
        std::swap(m_other, next);
    }
    void endOtherProgram() override { m_other.reset(); }
    bool runUntil(const std::function<bool()>& condition) override { return eventually(10s, condition); }
    void settle() override
    {
        bool isRead = false;
        const auto read = m_pasteboard.read({}, [&](const auto&) { isRead = true; });
        EXPECT_TRUE(runUntil([&] { return isRead; }));
    }

private:
    FakeLogSink m_log;
    QtRunLoop m_runLoop;
    X11Pasteboard m_pasteboard{m_log, m_runLoop};
    std::unique_ptr<SelectionOwner> m_other;
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

} // namespace

class PasteboardContract : public ::testing::TestWithParam<Implementation> {
protected:
    Pasteboard& pasteboard() { return subject->pasteboard(); }

    /// Reads and waits for the result.
    std::optional<PasteboardContents> read(const QStringList& types)
    {
        std::optional<PasteboardContents> contents;
        int completions = 0;
        const auto token = pasteboard().read(types, [&](std::optional<PasteboardContents> told) {
            contents = std::move(told);
            ++completions;
        });
        EXPECT_EQ(completions, 0);
        EXPECT_TRUE(subject->runUntil([&] { return completions > 0; }));
        EXPECT_EQ(completions, 1);
        return contents;
    }
    bool countBecomes(int count)
    {
        return subject->runUntil([&] { return pasteboard().changeCount() == count; });
    }

    std::unique_ptr<Subject> subject = GetParam().make();
    const int before = pasteboard().changeCount();
};

TEST_P(PasteboardContract, ACopyOfAnotherProgramChangesTheCountOnce)
{
    subject->copyElsewhere("one", {});
    EXPECT_TRUE(countBecomes(before + 1));
    subject->copyElsewhere("two", {});
    EXPECT_TRUE(countBecomes(before + 2));
    subject->settle();
    EXPECT_EQ(pasteboard().changeCount(), before + 2);
}

TEST_P(PasteboardContract, TheEndOfTheOtherProgramDoesNotChangeTheCount)
{
    subject->copyElsewhere("one", {});
    ASSERT_TRUE(countBecomes(before + 1));
    subject->endOtherProgram();
    subject->settle();
    EXPECT_EQ(pasteboard().changeCount(), before + 1);
}

TEST_P(PasteboardContract, OwnWritesCountAtOnceAndOnlyOnce)
{
    EXPECT_EQ(pasteboard().clearContents(), before + 1);
    EXPECT_EQ(pasteboard().changeCount(), before + 1);
    EXPECT_TRUE(pasteboard().setString(QStringLiteral("text"), string));
    EXPECT_TRUE(pasteboard().writeObjects(PasteboardImage{pngBytes}));
    subject->settle();
    subject->settle();
    EXPECT_EQ(pasteboard().changeCount(), before + 1);
    EXPECT_EQ(pasteboard().clearContents(), before + 2);
    EXPECT_EQ(pasteboard().clearContents(), before + 3);
    subject->settle();
    EXPECT_EQ(pasteboard().changeCount(), before + 3);
}

TEST_P(PasteboardContract, ACopyAfterAnOwnOneCountsAgain)
{
    pasteboard().clearContents();
    subject->settle();
    subject->copyElsewhere("theirs", {});
    EXPECT_TRUE(countBecomes(before + 2));
    EXPECT_FALSE(pasteboard().setString(QStringLiteral("late"), string));
    const auto contents = read({string});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->stringForType(string), QStringLiteral("theirs"));
}

TEST_P(PasteboardContract, ReadsWhatAnotherProgramCopied)
{
    subject->copyElsewhere("gr\xC3\xBC\xC3\x9F\x65", {});
    ASSERT_TRUE(countBecomes(before + 1));
    const auto contents = read({string, png});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->changeCount, before + 1);
    EXPECT_EQ(contents->types, QStringList{string});
    EXPECT_EQ(contents->stringForType(string), QStringLiteral("gr\u00FC\u00DFe"));
    EXPECT_FALSE(contents->dataForType(png));
}

TEST_P(PasteboardContract, ReadsOnlyTheTypesThatAreAskedForButTellsAll)
{
    subject->copyElsewhere(
        "text", {QUrl(QStringLiteral("file:///tmp/a%20b")), QUrl(QStringLiteral("file:///tmp/c"))});
    ASSERT_TRUE(countBecomes(before + 1));
    const auto none = read({});
    ASSERT_TRUE(none);
    EXPECT_THAT(none->types, ::testing::UnorderedElementsAre(string, fileURL));
    EXPECT_TRUE(none->data.isEmpty());
    EXPECT_TRUE(none->fileURLs.isEmpty());
    const auto files = read({fileURL});
    ASSERT_TRUE(files);
    EXPECT_EQ(files->stringForType(fileURL), QStringLiteral("file:///tmp/a%20b"));
    ASSERT_EQ(files->fileURLs.size(), 2);
    EXPECT_EQ(files->fileURLs[0].toLocalFile(), QStringLiteral("/tmp/a b"));
    EXPECT_EQ(files->fileURLs[1].toLocalFile(), QStringLiteral("/tmp/c"));
}

TEST_P(PasteboardContract, ReadsBackWhatItWrote)
{
    const int count = pasteboard().clearContents();
    EXPECT_TRUE(pasteboard().setString(QStringLiteral("text"), string));
    EXPECT_TRUE(pasteboard().setData("<b>text</b>", pasteboardType::html));
    EXPECT_TRUE(pasteboard().writeObjects(QList{QUrl::fromLocalFile(QStringLiteral("/tmp/a b"))}));
    EXPECT_TRUE(pasteboard().writeObjects(PasteboardImage{pngBytes}));
    const auto contents = read({string, png, fileURL});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->changeCount, count);
    EXPECT_THAT(contents->types,
                ::testing::UnorderedElementsAre(string, QString(pasteboardType::html), fileURL, png));
    EXPECT_EQ(contents->stringForType(string), QStringLiteral("text"));
    EXPECT_EQ(contents->dataForType(png), pngBytes);
    EXPECT_EQ(contents->fileURLs, QList{QUrl::fromLocalFile(QStringLiteral("/tmp/a b"))});
    EXPECT_FALSE(contents->data.contains(pasteboardType::html));
}

TEST_P(PasteboardContract, AClearedPasteboardIsEmpty)
{
    subject->copyElsewhere("theirs", {});
    ASSERT_TRUE(countBecomes(before + 1));
    pasteboard().clearContents();
    const auto contents = read({string});
    ASSERT_TRUE(contents);
    EXPECT_TRUE(contents->types.isEmpty());
    EXPECT_FALSE(contents->stringForType(string));
}

TEST_P(PasteboardContract, AnEmptyTextIsAText)
{
    pasteboard().clearContents();
    EXPECT_TRUE(pasteboard().setString(QString(), string));
    const auto contents = read({string});
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->stringForType(string), QString());
    subject->copyElsewhere(QByteArray(""), {});
    ASSERT_TRUE(countBecomes(before + 2));
    const auto theirs = read({string});
    ASSERT_TRUE(theirs);
    EXPECT_EQ(theirs->stringForType(string), QString());
}

TEST_P(PasteboardContract, NothingIsAddedToWhatIsNotOwn)
{
    EXPECT_FALSE(pasteboard().setString(QStringLiteral("text"), string));
    EXPECT_FALSE(pasteboard().writeObjects(PasteboardImage{pngBytes}));
}

TEST_P(PasteboardContract, ObjectsThatAreNotFilesOrPicturesAreRefused)
{
    pasteboard().clearContents();
    EXPECT_FALSE(pasteboard().writeObjects(QList<QUrl>()));
    EXPECT_FALSE(pasteboard().writeObjects(QList{QUrl(QStringLiteral("https://example.org/"))}));
    EXPECT_FALSE(pasteboard().writeObjects(PasteboardImage{"GIF89a"}));
    const auto contents = read({string});
    ASSERT_TRUE(contents);
    EXPECT_TRUE(contents->types.isEmpty());
}

TEST_P(PasteboardContract, AnEndedReadDoesNotComplete)
{
    subject->copyElsewhere("text", {});
    bool isCompleted = false;
    auto token = pasteboard().read({string}, [&](const auto&) { isCompleted = true; });
    token.reset();
    subject->settle();
    EXPECT_FALSE(isCompleted);
}

TEST_P(PasteboardContract, ACompletionMayEndItsOwnRead)
{
    subject->copyElsewhere("text", {});
    std::unique_ptr<PasteboardRead> token;
    const auto held = std::make_shared<int>(1);
    bool isCompleted = false;
    token = pasteboard().read({string}, [&, held](const auto&) {
        token.reset();
        isCompleted = *held == 1;
    });
    EXPECT_TRUE(subject->runUntil([&] { return isCompleted; }));
    EXPECT_EQ(held.use_count(), 1);
}

TEST_P(PasteboardContract, SeveralReadsCompleteInTheirOrder)
{
    subject->copyElsewhere("text", {});
    QString order;
    const auto first = pasteboard().read({string}, [&](const auto&) { order += u'1'; });
    const auto second = pasteboard().read({}, [&](const auto&) { order += u'2'; });
    const auto third = pasteboard().read({string}, [&](const auto&) { order += u'3'; });
    EXPECT_TRUE(subject->runUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, QStringLiteral("123"));
}

TEST_P(PasteboardContract, AWatchAnnouncesTheCopiesOfOthersInALaterTurn)
{
    int announced = 0;
    const auto watch = pasteboard().watch([&] {
        ++announced;
        EXPECT_NE(pasteboard().changeCount(), before) << "the count has changed already";
    });
    ASSERT_TRUE(watch);
    subject->settle();
    EXPECT_EQ(announced, 0);
    subject->copyElsewhere("one", {});
    EXPECT_EQ(announced, 0);
    EXPECT_TRUE(subject->runUntil([&] { return announced == 1; }));
    subject->copyElsewhere("two", {});
    EXPECT_TRUE(subject->runUntil([&] { return announced == 2; }));
    subject->settle();
    EXPECT_EQ(announced, 2);
}

TEST_P(PasteboardContract, AWatchAnnouncesOwnCopies)
{
    int announced = 0;
    const auto watch = pasteboard().watch([&] { ++announced; });
    ASSERT_TRUE(watch);
    pasteboard().clearContents();
    pasteboard().setString(QStringLiteral("text"), string);
    EXPECT_EQ(announced, 0);
    EXPECT_TRUE(subject->runUntil([&] { return announced == 1; }));
    subject->settle();
    EXPECT_EQ(announced, 1) << "the server's receipt for it is no further copy";
}

TEST_P(PasteboardContract, TheEndOfTheOtherProgramIsNotAnnounced)
{
    subject->copyElsewhere("one", {});
    ASSERT_TRUE(countBecomes(before + 1));
    subject->settle();
    int announced = 0;
    const auto watch = pasteboard().watch([&] { ++announced; });
    subject->endOtherProgram();
    subject->settle();
    subject->settle();
    EXPECT_EQ(announced, 0);
}

TEST_P(PasteboardContract, AnEndedWatchAnnouncesNothing)
{
    int announced = 0;
    auto watch = pasteboard().watch([&] { ++announced; });
    pasteboard().clearContents(); // its announcement is queued
    watch.reset();
    subject->settle();
    subject->copyElsewhere("one", {});
    EXPECT_TRUE(countBecomes(before + 2));
    subject->settle();
    EXPECT_EQ(announced, 0);
}

TEST_P(PasteboardContract, AHandlerMayEndItsOwnWatchAndOthersAreStillTold)
{
    const auto held = std::make_shared<int>(1);
    int announced = 0;
    std::unique_ptr<PasteboardWatch> first;
    first = pasteboard().watch([&, held] {
        first.reset();
        announced += *held;
    });
    int others = 0;
    const auto second = pasteboard().watch([&] { ++others; });
    subject->copyElsewhere("one", {});
    EXPECT_TRUE(subject->runUntil([&] { return others == 1; }));
    subject->copyElsewhere("two", {});
    EXPECT_TRUE(subject->runUntil([&] { return others == 2; }));
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(held.use_count(), 1);
}

INSTANTIATE_TEST_SUITE_P(Platforms, PasteboardContract,
                         ::testing::Values(Implementation{"Fake",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<FakeSubject>();
                                                          }},
                                           Implementation{"Linux",
                                                          []() -> std::unique_ptr<Subject> {
                                                              return std::make_unique<LinuxSubject>();
                                                          }}),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace orvane::tests
