// Text that a person drags a box over, read by the built program and its worker.
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/ShellFixture.h"
#include "Support/Eventually.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <optional>

namespace orvane::tests {
namespace {

constexpr auto deadline = 30s;
constexpr StoredShortcut controlOptionT{17, 0x1800};
const QString first = QStringLiteral("The harbour lies in the sun");
const QString second = QStringLiteral("and every boat is out");
/// Where the text is, inside of its page.
constexpr QPoint from(305, 205);
constexpr QPoint to(600, 285);
/// Between the two lines.
constexpr QPoint belowFirst(600, 241);

class TextExtractorDesktopTest : public ShellDesktopTest {
protected:
    void startExtractor()
    {
        start({.enabled = {QStringLiteral("textextractor")},
               .shortcuts = {{QStringLiteral("textextractor.extract"), controlOptionT}}});
        ASSERT_TRUE(eventually(
            deadline, [this] { return statusMenu().labels().contains(QStringLiteral("Text Extractor")); }));
        m_page.emplace(QStringLiteral(ORVANE_TEXT_PEER),
                       QStringList{QStringLiteral("300"), QStringLiteral("200"), first, second});
        ASSERT_TRUE(m_page->tells(QStringLiteral("shown")));
    }
    void begin()
    {
        m_hardware.movePointer(from);
        chord({"Control_L", "Alt_L", "t"});
        ASSERT_TRUE(eventually(deadline, [this] { return isUp(); }));
    }
    void drag(QPoint end = to)
    {
        m_hardware.press(Button::left);
        m_hardware.movePointer((from + end) / 2);
        m_hardware.movePointer(end);
        m_hardware.release(Button::left);
    }
    [[nodiscard]] bool isUp() const
    {
        for (const ScreenWindow& window : m_screen.windowsOf(m_program->pid())) {
            if (window.geometry.width() > 1000)
                return true;
        }
        return false;
    }
    [[nodiscard]] bool goes() const
    {
        return eventually(deadline, [this] { return !isUp(); });
    }
    [[nodiscard]] bool copies(const QString& text)
    {
        return eventually(deadline, [&] { return clipboardText() == text; });
    }
    /// Returns the program's worker for text; nothing while there is none.
    [[nodiscard]] std::optional<pid_t> worker() const
    {
        for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
            QFile state(QStringLiteral("/proc/%1/stat").arg(name));
            if (name.toInt() <= 0 || !state.open(QFile::ReadOnly))
                continue;
            const QByteArray line = state.readAll();
            const qsizetype end = line.lastIndexOf(')');
            if (line.contains("(orvane-worker)") &&
                line.mid(end + 4).split(' ').value(0).toLongLong() == m_program->pid())
                return name.toInt();
        }
        return std::nullopt;
    }

    std::optional<Peer> m_page;
    OtherClient m_other;
};

} // namespace

TEST_F(TextExtractorDesktopTest, TheTextInTheBoxIsOnTheClipboard)
{
    startExtractor();
    begin();
    drag();
    EXPECT_TRUE(copies(first + u'\n' + second)) << clipboardText().toStdString();
    EXPECT_TRUE(goes());
    EXPECT_EQ(m_program->log().filter(QStringLiteral("OCR copied")).size(), 1);
    EXPECT_TRUE(eventually(deadline, [this] { return !m_other.isKeyboardGrabbed(); }));
}

TEST_F(TextExtractorDesktopTest, EscapeCancelsAndTheClipboardStays)
{
    startExtractor();
    const QString before = clipboardText();
    begin();
    m_hardware.press(Button::left);
    m_hardware.movePointer(to);
    m_hardware.tap("Escape");
    EXPECT_TRUE(goes());
    m_hardware.release(Button::left);
    EXPECT_TRUE(eventually(deadline, [this] { return !m_other.isKeyboardGrabbed(); }));
    EXPECT_EQ(clipboardText(), before);
    begin();
    drag();
    EXPECT_TRUE(copies(first + u'\n' + second)) << clipboardText().toStdString();
}

TEST_F(TextExtractorDesktopTest, AfterAWorkerWasKilledTheNextTextIsRead)
{
    startExtractor();
    begin();
    ASSERT_TRUE(eventually(deadline, [this] { return worker().has_value(); })) << "it starts with the drag";
    const pid_t stopped = worker().value_or(0);
    ASSERT_EQ(::kill(stopped, SIGSTOP), 0); // so that it can't answer before it is killed
    drag();
    ASSERT_EQ(::kill(stopped, SIGKILL), 0);
    EXPECT_TRUE(goes());
    begin();
    drag(belowFirst);
    EXPECT_TRUE(copies(first)) << clipboardText().toStdString();
}

} // namespace orvane::tests
