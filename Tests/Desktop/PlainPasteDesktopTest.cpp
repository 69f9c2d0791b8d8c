// Paste as Plain Text as a person uses it: formatted copies of other programs, pasted by the shortcut.
#include "Contract/Support/SelectionAsker.h"
#include "Contract/Support/SelectionOwner.h"
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/ShellFixture.h"
#include "Desktop/Support/Terminal.h"
#include "Desktop/Support/WindowManagersWord.h"
#include "Support/Eventually.h"

#include <QBuffer>

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

using Manner = SelectionOwner::Manner;
using ::testing::Contains;
using ::testing::Not;

constexpr int shift = 0x200;
constexpr int control = 0x1000;
constexpr int option = 0x800;
constexpr StoredShortcut controlOptionV{9, control | option};
constexpr StoredShortcut controlShiftV{9, control | shift};

/// The formats that browsers offer for a marked part of a page, without plain text.
const QMap<QByteArray, QByteArray> browser{
    {"text/html", "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">"
                  "<span style=\"color:red\">caf\xC3\xA9 <b>au</b>&nbsp;lait</span>"},
    {"text/_moz_htmlcontext", QByteArray("<\0h\0t\0m\0l\0>\0", 12)},
    {"text/_moz_htmlinfo", QByteArray("0\0,\0"
                                      "0\0",
                                      6)},
};
const QString fromBrowser = QStringLiteral("caf\u00E9 au\u00A0lait");

/// The formats that word processors offer, again without the plain text.
const QMap<QByteArray, QByteArray> office{
    {"application/x-openoffice-objectdescriptor-xml;windows_formatname=\"Star Object Descriptor (XML)\"",
     "x"},
    {"text/rtf", "{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0\\fnil Serif;}}\\f0\\fs24{\\b Gr\\'fc\\'dfe} aus "
                 "{\\i Wien}\\par}"},
    {"text/html", "<p>not this one</p>"},
};
const QString fromOffice = QStringLiteral("Gr\u00FC\u00DFe aus Wien");

QByteArray picture()
{
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

/// Takes Accessibility away from every program of the desktop until the object's end.
class WithoutTrust {
public:
    WithoutTrust() { m_word.remove(); }

private:
    WindowManagersWord m_word;
};

class PlainPasteDesktopTest : public ShellDesktopTest {
protected:
    enum class AutoPaste { off, on };

    void startWith(StoredShortcut shortcut = controlOptionV, AutoPaste autoPaste = AutoPaste::on)
    {
        start({.enabled = {QStringLiteral("plainpaste")},
               .shortcuts = {{QStringLiteral("plainpaste.paste"), shortcut}},
               .more = {{QStringLiteral("net.lindenrow.orvane.plainpaste.autoPaste"),
                         autoPaste == AutoPaste::on}}});
        ASSERT_TRUE(eventually(
            10s, [&] { return statusMenu().labels().contains(QStringLiteral("Paste as Plain Text")); }));
    }
    void pasteAsPlainText() { chord({"Control_L", "Alt_L", "v"}); }

    /// Expects that nothing was typed before this: it would stand before the z.
    void expectNothingWasTyped(Peer& peer)
    {
        m_hardware.tap("z");
        EXPECT_TRUE(peer.tells(QStringLiteral("text:z"))) << peer.text().toStdString();
        EXPECT_EQ(peer.text(), QStringLiteral("z"));
    }
    /// Expects that the clipboard holds this text and nothing else.
    static void expectOnlyText(const QString& text)
    {
        EXPECT_TRUE(eventually(10s, [&] { return clipboardText() == text; }))
            << clipboardText().toStdString();
        EXPECT_THAT(SelectionAsker().targets(), Not(Contains("text/html")));
        EXPECT_THAT(SelectionAsker().targets(), Not(Contains("text/rtf")));
    }
    /// Pastes each of the two copies into an editor.
    void expectPastedInto(const QString& editor)
    {
        startWith();
        Peer peer(editor);
        ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
        {
            const SelectionOwner owner(browser, Manner::whole);
            pasteAsPlainText();
            ASSERT_TRUE(peer.tells(QStringLiteral("text:") + fromBrowser)) << peer.text().toStdString();
            expectOnlyText(fromBrowser);
        }
        const SelectionOwner owner(office, Manner::pieces);
        pasteAsPlainText();
        EXPECT_TRUE(peer.tells(QStringLiteral("text:") + fromBrowser + fromOffice))
            << peer.text().toStdString();
        expectOnlyText(fromOffice);
    }
};

} // namespace

TEST_F(PlainPasteDesktopTest, PastesFormattedCopiesIntoAQtLineEdit)
{
    expectPastedInto(Peer::lineEdit());
}

TEST_F(PlainPasteDesktopTest, PastesFormattedCopiesIntoAGtkEntry)
{
    expectPastedInto(Peer::gtkEntry());
}

TEST_F(PlainPasteDesktopTest, PastesIntoATerminal)
{
    startWith();
    Terminal terminal;
    ASSERT_TRUE(terminal.getsKeys(m_hardware));
    const SelectionOwner owner(browser, Manner::whole);
    pasteAsPlainText();
    EXPECT_TRUE(eventually(10s, [&] { return terminal.typed().endsWith(fromBrowser.toUtf8()); }))
        << terminal.typed().constData();
}

TEST_F(PlainPasteDesktopTest, AShortcutThatIsTheTerminalsOwnPasteStillPastesOnce)
{
    startWith(controlShiftV);
    Terminal terminal;
    ASSERT_TRUE(terminal.getsKeys(m_hardware));
    const QByteArray before = terminal.typed();
    const SelectionOwner owner(browser, Manner::whole);
    chord({"Control_L", "Shift_L", "v"});
    EXPECT_TRUE(eventually(10s, [&] { return terminal.typed().endsWith(fromBrowser.toUtf8()); }))
        << terminal.typed().constData();
    m_hardware.tap("g");
    EXPECT_TRUE(eventually(10s, [&] { return terminal.typed() == before + fromBrowser.toUtf8() + "g"; }))
        << terminal.typed().constData();
}

TEST_F(PlainPasteDesktopTest, PastesATextOfXclip)
{
    startWith();
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    setClipboardText(QStringLiteral(" a text "));
    pasteAsPlainText();
    EXPECT_TRUE(peer.tells(QStringLiteral("text: a text "))) << peer.text().toStdString();
}

TEST_F(PlainPasteDesktopTest, ABoldTextThatIsCopiedAndPastedInPlaceLosesItsBold)
{
    startWith();
    Peer peer(QStringLiteral(ORVANE_RICH_EDIT_PEER));
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    m_hardware.tap("Home");
    chord({"Control_L", "Right"});
    press({"Shift_L"});
    for (int i = 0; i < 4; ++i)
        m_hardware.tap("Right");
    release({"Shift_L"});
    ASSERT_TRUE(peer.tells(QStringLiteral("marked:bold")));
    chord({"Control_L", "c"});
    ASSERT_TRUE(eventually(10s, [] { return clipboardText() == QStringLiteral("bold"); }));
    EXPECT_THAT(SelectionAsker().targets(), Contains("text/html"));
    // The usual paste keeps the format.
    chord({"Control_L", "v"});
    ASSERT_TRUE(peer.tells(QStringLiteral("text:one /bold/ two"))) << peer.text().toStdString();
    press({"Shift_L"});
    for (int i = 0; i < 4; ++i)
        m_hardware.tap("Left");
    release({"Shift_L"});
    ASSERT_TRUE(peer.tells(QStringLiteral("marked:bold")));
    pasteAsPlainText();
    EXPECT_TRUE(peer.tells(QStringLiteral("text:one bold two"))) << peer.text().toStdString();
    expectOnlyText(QStringLiteral("bold"));
}

TEST_F(PlainPasteDesktopTest, APictureAloneStaysAndNothingIsPasted)
{
    startWith();
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    const SelectionOwner owner({{"image/png", picture()}}, Manner::whole);
    pasteAsPlainText();
    ASSERT_TRUE(eventually(10s, [&] { return owner.requests() > 0; }));
    // A second press is handled after the first one, and its effect shows that the first had none.
    m_hardware.tap("z");
    EXPECT_TRUE(peer.tells(QStringLiteral("text:z")));
    EXPECT_EQ(SelectionAsker().ask("image/png"), picture());
    setClipboardText(QStringLiteral("word"));
    pasteAsPlainText();
    EXPECT_TRUE(peer.tells(QStringLiteral("text:zword"))) << peer.text().toStdString();
}

TEST_F(PlainPasteDesktopTest, WithAutoPasteOffTheClipboardIsCleanedAndNothingIsTyped)
{
    startWith(controlOptionV, AutoPaste::off);
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    const SelectionOwner owner(browser, Manner::whole);
    pasteAsPlainText();
    expectOnlyText(fromBrowser);
    expectNothingWasTyped(peer);
}

TEST_F(PlainPasteDesktopTest, WithoutTrustTheClipboardIsCleanedAndNothingIsTyped)
{
    const WithoutTrust withoutTrust;
    startWith();
    Peer peer(Peer::lineEdit());
    ASSERT_TRUE(peer.tells(QStringLiteral("focused")));
    const SelectionOwner owner(browser, Manner::whole);
    pasteAsPlainText();
    expectOnlyText(fromBrowser);
    expectNothingWasTyped(peer);
}

TEST_F(PlainPasteDesktopTest, TurnedOffItDoesNothing)
{
    start({.enabled = {QStringLiteral("awake")},
           .shortcuts = {{QStringLiteral("plainpaste.paste"), controlOptionV},
                         {QStringLiteral("awake.toggle"), {49, control | option}}}});
    ASSERT_TRUE(eventually(10s, [&] { return statusMenu().labels().contains(QStringLiteral("Awake")); }));
    const SelectionOwner owner(browser, Manner::whole);
    pasteAsPlainText();
    chord({"Control_L", "Alt_L", "space"});
    EXPECT_TRUE(becomesAwake());
    EXPECT_THAT(SelectionAsker().targets(), Contains("text/html"));
}

} // namespace orvane::tests
