// The clipboard history as a person uses it: copies of real programs, the panel, and pasting from it.
#include "Contract/Support/SelectionOwner.h"
#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/ClipboardFixture.h"
#include "Desktop/Support/FileWindow.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/Terminal.h"
#include "Support/Eventually.h"

#include <QBuffer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace orvane::tests {
namespace {

using Manner = SelectionOwner::Manner;
using ::testing::Contains;
using ::testing::Not;

const QString autoPaste = QStringLiteral("autoPaste");
const QString persist = QStringLiteral("persist");

QStringList texts(std::initializer_list<const char*> names)
{
    QStringList list;
    for (const char* name : names)
        list.append(QStringLiteral("text:") + QLatin1String(name));
    return list;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Copies a picture, which xclip holds.
void copyPicture(const QString& path)
{
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    ASSERT_TRUE(image.save(path, "PNG"));
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("xclip"),
                  {QStringLiteral("-i"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                   QStringLiteral("-t"), QStringLiteral("image/png"), path});
    ASSERT_TRUE(process.waitForFinished(5000));
}

mode_t modeOf(const QString& path)
{
    struct stat status = {};
    return ::stat(qPrintable(path), &status) == 0 ? status.st_mode & 07777 : 0;
}

class ClipboardDesktopTest : public ClipboardFixture {
protected:
    /// Makes three copies, brings an editor to the front and chooses the middle copy by typing.
    void chooseTheSecondOfThree()
    {
        copy({QStringLiteral("alpha"), QStringLiteral("beta"), QStringLiteral("gamma")});
        ASSERT_TRUE(openPanel());
        type("bet");
        ASSERT_TRUE(rowsBecome({QStringLiteral("beta")}));
        m_hardware.tap("Return");
        ASSERT_TRUE(panelCloses());
    }
    void expectPastedInto(const QString& editor)
    {
        startHistory({.settings = {{autoPaste, true}}});
        Peer peer(editor);
        ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
        chooseTheSecondOfThree();
        EXPECT_TRUE(peer.tells(QStringLiteral("text:beta"))) << peer.text().toStdString();
        EXPECT_EQ(peer.text(), QStringLiteral("beta")) << "what was typed into the panel isn't the editor's";
        EXPECT_TRUE(historyBecomes(texts({"gamma", "beta", "alpha"}))) << "choosing doesn't reorder";
    }
    /// Goes through the page of the home window with Tab until the element is visible, and clicks on it. (Of
    /// the wheel of the test's hardware the toolkit takes the first notch only.)
    void clickOnPage(const QString& name, const QString& role)
    {
        const AccessibleTree tree(program().pid());
        ASSERT_TRUE(eventually(10s, [&] {
            const auto node = tree.find(qPrintable(role), name);
            const auto home = m_screen.window(program().pid(), QStringLiteral("Orvane"));
            if (!node || !home)
                return false;
            if (home->geometry.contains(node->place))
                return true;
            m_hardware.tap("Tab");
            return false;
        })) << name.toStdString();
        ASSERT_TRUE(clickOn(name, role));
    }
    /// Returns the files in the home that hold the text.
    QStringList filesWith(const QByteArray& text)
    {
        QStringList found;
        QDirIterator files(program().home()->path(), QDir::Files | QDir::Hidden,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            if (contentOf(files.next()).contains(text))
                found.append(files.filePath());
        }
        return found;
    }
};

} // namespace

TEST_F(ClipboardDesktopTest, CopiesOfOtherProgramsAppearInTheirOrder)
{
    startHistory();
    QTemporaryDir folder;
    {
        Peer peer(Peer::lineEdit());
        ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
        type("a text");
        chord({"Control_L", "a"});
        ASSERT_TRUE(peer.tells(QStringLiteral("marked:a text")));
        chord({"Control_L", "c"});
        ASSERT_TRUE(historyBecomes({QStringLiteral("text:a text")}));
    }
    QStringList entries{QStringLiteral("text:a text")};
    {
        const SelectionOwner browser(
            {{"text/x-moz-url", QByteArray("h\0t\0t\0p\0:\0/\0/\0e\0.\0x\0\n\0E\0", 24)},
             {"UTF8_STRING", "http://e.x"}},
            Manner::whole);
        entries.prepend(QStringLiteral("url:http://e.x"));
        ASSERT_TRUE(historyBecomes(entries));
    }
    copyPicture(folder.filePath(QStringLiteral("picture.png")));
    entries.prepend(QStringLiteral("image:"));
    ASSERT_TRUE(historyBecomes(entries));
    const QString things = folder.filePath(QStringLiteral("things"));
    QDir().mkpath(things);
    for (const char* name : {"a b.txt", "c.txt", "d.txt"})
        ASSERT_TRUE(QFile(things + QLatin1Char('/') + QLatin1String(name)).open(QIODevice::WriteOnly));
    FileWindow files(things, m_hardware);
    ASSERT_TRUE(files.copyFirst(2));
    entries.prepend(QStringLiteral("fileURLs:a b.txt, c.txt"));
    ASSERT_TRUE(historyBecomes(entries));
    const SelectionOwner office(
        {{"text/rtf", "{\\rtf1{\\b bold}}"}, {"text/html", "<b>bold</b>"}, {"UTF8_STRING", "bold"}},
        Manner::pieces);
    entries.prepend(QStringLiteral("text:bold"));
    ASSERT_TRUE(historyBecomes(entries));

    const QJsonArray list = stored();
    EXPECT_EQ(list[1].toObject()[QStringLiteral("filePaths")].toVariant().toStringList(),
              (QStringList{things + QStringLiteral("/a b.txt"), things + QStringLiteral("/c.txt")}));
    const QString image = list[2].toObject()[QStringLiteral("imageFileName")].toString();
    EXPECT_EQ(QImage(imagesFolder() + QLatin1Char('/') + image).size(), QSize(64, 48));
    ASSERT_TRUE(openPanel());
    EXPECT_EQ(rows().size(), 5);
    m_hardware.tap("Escape");
    EXPECT_TRUE(panelCloses());
}

TEST_F(ClipboardDesktopTest, WhatIsOnTheClipboardAtTheStartIsNotCaptured)
{
    setClipboardText(QStringLiteral("from before"));
    startHistory();
    copy(QStringLiteral("after"));
    EXPECT_EQ(storedEntries(), texts({"after"}));
}

TEST_F(ClipboardDesktopTest, ASecretOfAPasswordManagerIsPassedOver)
{
    startHistory();
    const SelectionOwner secret({{"UTF8_STRING", "hunter"}, {"x-kde-passwordManagerHint", "secret"}},
                                Manner::pieces);
    constexpr int piecesOfTheHint = 2; // the hint itself and its end
    ASSERT_TRUE(eventually(10s, [&] { return secret.piecesSent() >= piecesOfTheHint; }))
        << "nobody looks at the hint";
    copy(QStringLiteral("after"));
    EXPECT_EQ(storedEntries(), texts({"after"}));
    EXPECT_EQ(secret.piecesSent(), piecesOfTheHint) << "the secret itself was asked for";
    EXPECT_TRUE(filesWith("hunter").isEmpty());
}

TEST_F(ClipboardDesktopTest, ASecretIsCapturedWhereTheMarkDoesntCount)
{
    startHistory({.settings = {{QStringLiteral("ignoreConcealed"), false}}});
    const SelectionOwner secret({{"UTF8_STRING", "hunter"}, {"x-kde-passwordManagerHint", "secret"}},
                                Manner::whole);
    EXPECT_TRUE(historyBecomes(texts({"hunter"})));
}

TEST_F(ClipboardDesktopTest, ReturnPastesIntoAQtLineEdit)
{
    expectPastedInto(Peer::lineEdit());
}

TEST_F(ClipboardDesktopTest, ReturnPastesIntoAGtkEntry)
{
    expectPastedInto(Peer::gtkEntry());
}

TEST_F(ClipboardDesktopTest, ReturnPastesIntoATerminal)
{
    startHistory({.settings = {{autoPaste, true}}});
    Terminal terminal;
    ASSERT_TRUE(terminal.getsKeys(m_hardware));
    const QByteArray before = terminal.typed();
    chooseTheSecondOfThree();
    EXPECT_TRUE(eventually(10s, [&] { return terminal.typed() == before + "beta"; }))
        << terminal.typed().constData();
}

TEST_F(ClipboardDesktopTest, AClickPastesToo)
{
    startHistory({.settings = {{autoPaste, true}}});
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    copy({QStringLiteral("alpha"), QStringLiteral("beta")});
    ASSERT_TRUE(openPanel());
    ASSERT_TRUE(clickOn(QStringLiteral("alpha"), QStringLiteral("list item")));
    EXPECT_TRUE(panelCloses());
    EXPECT_TRUE(peer.tells(QStringLiteral("text:alpha"))) << peer.text().toStdString();
}

TEST_F(ClipboardDesktopTest, WithAutoPasteOffTheClipboardHoldsTheEntryAndNothingIsTyped)
{
    startHistory();
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    chooseTheSecondOfThree();
    EXPECT_TRUE(eventually(10s, [] { return clipboardText() == QStringLiteral("beta"); }));
    // It is up to the window manager to give the editor the keyboard again.
    ASSERT_TRUE(OtherClient().activate("Line edit"));
    ASSERT_TRUE(eventually(10s, [&] {
        m_hardware.tap("z");
        return peer.text().contains(QLatin1Char('z'));
    }));
    EXPECT_EQ(peer.text().remove(QLatin1Char('z')), QString());
}

TEST_F(ClipboardDesktopTest, ItsOwnWriteIsNotCapturedAgain)
{
    startHistory();
    chooseTheSecondOfThree();
    ASSERT_TRUE(eventually(10s, [] { return clipboardText() == QStringLiteral("beta"); }));
    copy(QStringLiteral("delta"));
    EXPECT_EQ(storedEntries(), texts({"delta", "gamma", "beta", "alpha"}));
}

TEST_F(ClipboardDesktopTest, PlainPasteIsACopyToo)
{
    startHistory({.others = {QStringLiteral("plainpaste")},
                  .shortcuts = {{QStringLiteral("plainpaste.paste"), {40, 0x1800}}}});
    const SelectionOwner browser({{"text/html", "<b>marked</b> text"}}, Manner::whole);
    ASSERT_TRUE(eventually(10s, [&] { return browser.requests() > 0; }));
    EXPECT_TRUE(storedEntries().isEmpty()) << "there is no text of its own";
    chord({"Control_L", "Alt_L", "k"});
    EXPECT_TRUE(historyBecomes(texts({"marked text"})));
}

TEST_F(ClipboardDesktopTest, TypingNarrowsTheListAndAnEmptyOneSaysSo)
{
    startHistory();
    copy({QStringLiteral("alpha"), QStringLiteral("beta"), QStringLiteral("alphabet")});
    ASSERT_TRUE(openPanel());
    EXPECT_TRUE(rowsBecome({QStringLiteral("alphabet"), QStringLiteral("beta"), QStringLiteral("alpha")}));
    type("alpha");
    EXPECT_TRUE(rowsBecome({QStringLiteral("alphabet"), QStringLiteral("alpha")}));
    type("zzz");
    EXPECT_TRUE(rowsBecome({}));
    const AccessibleTree tree(program().pid());
    const auto emptyText = [&] {
        return tree.find("label", QStringLiteral("No clipboard history yet")).has_value();
    };
    EXPECT_TRUE(eventually(5s, emptyText));
    m_hardware.tap("Return");
    for (int i = 0; i < 6; ++i)
        m_hardware.tap("BackSpace");
    EXPECT_TRUE(rowsBecome({QStringLiteral("alphabet"), QStringLiteral("alpha")}))
        << "with nothing listed, Return does nothing";
    EXPECT_EQ(clipboardText(), QStringLiteral("alphabet"));
    m_hardware.tap("Escape");
    EXPECT_TRUE(panelCloses());
    ASSERT_TRUE(openPanel());
    EXPECT_TRUE(eventually(10s, [this] { return rows().size() == 3; })) << "each showing begins unfiltered";
}

TEST_F(ClipboardDesktopTest, TheShortcutTwiceAndAClickElsewhereCloseThePanel)
{
    startHistory();
    copy(QStringLiteral("alpha"));
    ASSERT_TRUE(openPanel());
    pressShow();
    EXPECT_TRUE(panelCloses());
    m_hardware.movePointer({300, 300});
    ASSERT_TRUE(openPanel());
    m_hardware.click(panelFrame().value_or(QRect()).center() + QPoint(0, 150), Button::left);
    m_hardware.click({1100, 300}, Button::left);
    EXPECT_TRUE(panelCloses());
    EXPECT_EQ(clipboardText(), QStringLiteral("alpha"));
}

TEST_F(ClipboardDesktopTest, ThePanelOpensAtThePointerAndStaysOnTheScreen)
{
    startHistory();
    m_hardware.movePointer({300, 200});
    ASSERT_TRUE(openPanel());
    EXPECT_EQ(panelFrame().value_or(QRect()).topLeft(), QPoint(300, 200));
    pressShow();
    ASSERT_TRUE(panelCloses());
    m_hardware.movePointer({1439, 450});
    ASSERT_TRUE(openPanel());
    EXPECT_EQ(panelFrame().value_or(QRect()).right() + 1, 1440 - 8);
}

TEST_F(ClipboardDesktopTest, PinsSurviveClearHistoryAndARestart)
{
    startHistory();
    copy({QStringLiteral("alpha"), QStringLiteral("beta"), QStringLiteral("gamma")});
    m_hardware.movePointer({300, 200});
    ASSERT_TRUE(openPanel());
    chooseInRowMenu(QStringLiteral("beta"), RowEntry::pin);
    ASSERT_TRUE(historyBecomes(
        {QStringLiteral("text:gamma"), QStringLiteral("*text:beta"), QStringLiteral("text:alpha")}));
    chooseInRowMenu(QStringLiteral("alpha"), RowEntry::remove);
    ASSERT_TRUE(historyBecomes({QStringLiteral("text:gamma"), QStringLiteral("*text:beta")}));
    m_hardware.tap("Escape");
    ASSERT_TRUE(panelCloses());
    restart();
    EXPECT_TRUE(historyBecomes({QStringLiteral("text:gamma"), QStringLiteral("*text:beta")}));

    Program second({.home = program().home()});
    ASSERT_TRUE(second.wait());
    ASSERT_TRUE(eventually(10s, [&] { return homeIsShown(); }));
    ASSERT_TRUE(clickOn(QStringLiteral("Clipboard History"), QStringLiteral("list item")));
    clickOnPage(QStringLiteral("Clear History"), QStringLiteral("push button"));
    EXPECT_TRUE(historyBecomes({QStringLiteral("*text:beta")}));
    restart();
    ASSERT_TRUE(openPanel());
    EXPECT_TRUE(rowsBecome({QStringLiteral("beta")}));
}

TEST_F(ClipboardDesktopTest, WithKeepingOffNothingOfTheListReachesTheDisk)
{
    startHistory({.settings = {{persist, false}}});
    ASSERT_TRUE(openPanel());
    setClipboardText(QStringLiteral("fleeting"));
    ASSERT_TRUE(rowsBecome({QStringLiteral("fleeting")}));
    const auto home = program().home();
    program().signal(SIGTERM);
    ASSERT_TRUE(program().wait());
    EXPECT_FALSE(QFile::exists(historyFile()));
    EXPECT_TRUE(filesWith("fleeting").isEmpty()) << filesWith("fleeting").first().toStdString();
}

TEST_F(ClipboardDesktopTest, ItsFilesAreTheirOwnersAlone)
{
    startHistory();
    QTemporaryDir folder;
    copyPicture(folder.filePath(QStringLiteral("picture.png")));
    ASSERT_TRUE(historyBecomes({QStringLiteral("image:")}));
    EXPECT_EQ(modeOf(historyFolder(*program().home())), 0700u);
    EXPECT_EQ(modeOf(imagesFolder()), 0700u);
    EXPECT_EQ(modeOf(historyFile()), 0600u);
    const QStringList images = QDir(imagesFolder()).entryList(QDir::Files);
    ASSERT_EQ(images.size(), 1);
    EXPECT_EQ(modeOf(imagesFolder() + QLatin1Char('/') + images.first()), 0600u);
}

} // namespace orvane::tests
