#include "Desktop/Support/ClipboardFixture.h"

#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Peer.h"
#include "Support/Eventually.h"

#include <QFile>
#include <QJsonDocument>

#include <csignal>

namespace orvane::tests {

namespace {

constexpr StoredShortcut controlOptionV{9, 0x1000 | 0x800};
const QString capability = QStringLiteral("net.lindenrow.orvane.clipboardhistory");

} // namespace

void ClipboardFixture::startHistory(const Setup& setup)
{
    Stored defaults{.enabled = QStringList{QStringLiteral("clipboardhistory")} + setup.others,
                    .shortcuts = setup.shortcuts,
                    .more = setup.more};
    defaults.shortcuts[QStringLiteral("clipboardhistory.show")] = controlOptionV;
    for (auto it = setup.settings.begin(); it != setup.settings.end(); ++it)
        defaults.more[capability + QLatin1Char('.') + it.key()] = it.value();
    m_program = std::make_unique<Program>(
        Program::Start{.defaults = ShellDesktopTest::defaults(defaults), .home = setup.home});
    waitUntilActive();
}

void ClipboardFixture::waitUntilActive()
{
    ASSERT_TRUE(m_program->waitUntilReady());
    ASSERT_TRUE(
        eventually(10s, [&] { return statusMenu().labels().contains(QStringLiteral("Clipboard History")); }));
}

void ClipboardFixture::restart()
{
    const auto home = m_program->home();
    m_program->signal(SIGTERM);
    ASSERT_TRUE(m_program->wait());
    m_program = std::make_unique<Program>(Program::Start{.home = home});
    waitUntilActive();
}

void ClipboardFixture::copy(const QString& text)
{
    setClipboardText(text);
    ASSERT_TRUE(eventually(10s, [&] {
        return storedEntries().value(0).endsWith(QStringLiteral("text:") + text);
    })) << text.toStdString();
}

void ClipboardFixture::copy(const QStringList& texts)
{
    for (const QString& text : texts)
        copy(text);
}

QString ClipboardFixture::historyFolder(const PrivateHome& home)
{
    return home.dataDirectory() + QStringLiteral("/Orvane/") + capability;
}

QString ClipboardFixture::historyFile() const
{
    return historyFolder(*m_program->home()) + QStringLiteral("/history.json");
}

QString ClipboardFixture::imagesFolder() const
{
    return historyFolder(*m_program->home()) + QStringLiteral("/images");
}

QJsonArray ClipboardFixture::stored() const
{
    QFile file(historyFile());
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}

QStringList ClipboardFixture::storedEntries() const
{
    QStringList entries;
    for (const QJsonValue& value : stored()) {
        const QJsonObject entry = value.toObject();
        const QString mark = entry[QStringLiteral("pinned")].toBool() ? QStringLiteral("*") : QString();
        entries.append(mark + entry[QStringLiteral("kind")].toString() + QLatin1Char(':') +
                       entry[QStringLiteral("text")].toString());
    }
    return entries;
}

testing::AssertionResult ClipboardFixture::historyBecomes(const QStringList& entries) const
{
    QStringList last;
    if (eventually(10s, [&] { return (last = storedEntries()) == entries; }))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the history is\n" << last.join(QLatin1Char('\n')).toStdString();
}

QRect ClipboardFixture::frameOf(const ScreenWindow& window) const
{
    return window.geometry.marginsRemoved(m_windows.ownMargins(window.id));
}

std::optional<ScreenWindow> ClipboardFixture::shownPanel() const
{
    for (const ScreenWindow& window : m_screen.windowsOf(m_program->pid())) {
        if (window.title != QStringLiteral("Orvane") && frameOf(window).size() == QSize(360, 420))
            return window;
    }
    return std::nullopt;
}

std::optional<QRect> ClipboardFixture::panelFrame() const
{
    const auto panel = shownPanel();
    return panel ? std::optional(frameOf(*panel)) : std::nullopt;
}

testing::AssertionResult ClipboardFixture::openPanel()
{
    pressShow();
    const bool hasKeyboard = eventually(10s, [&] {
        const auto panel = shownPanel();
        return panel && m_windows.active() == panel->id;
    });
    if (hasKeyboard)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << (panelFrame() ? "it stands without the keyboard" : "no panel");
}

bool ClipboardFixture::panelCloses()
{
    return eventually(10s, [&] { return !panelFrame(); });
}

void ClipboardFixture::type(const char* letters)
{
    for (const char* letter = letters; *letter; ++letter) {
        const char name[2]{*letter, 0};
        m_hardware.tap(*letter == ' ' ? "space" : name);
    }
}

QStringList ClipboardFixture::rows() const
{
    QStringList names;
    for (const AccessibleNode& node : AccessibleTree(m_program->pid()).nodes()) {
        if (node.role == QStringLiteral("list item"))
            names.append(node.name);
    }
    return names;
}

testing::AssertionResult ClipboardFixture::rowsBecome(const QStringList& names) const
{
    QStringList last;
    if (eventually(10s, [&] { return (last = rows()) == names; }))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "it lists\n" << last.join(QLatin1Char('\n')).toStdString();
}

void ClipboardFixture::chooseInRowMenu(const QString& row, RowEntry entry)
{
    const auto windows = [&] { return m_screen.windowsOf(m_program->pid()).size(); };
    const qsizetype before = windows();
    ASSERT_TRUE(clickOn(row, QStringLiteral("list item"), Button::right));
    // The menu is on the screen before it has the keyboard.
    ASSERT_TRUE(eventually(5s, [&] { return windows() > before && OtherClient().isKeyboardGrabbed(); }));
    for (int i = 0; i <= static_cast<int>(entry); ++i)
        m_hardware.tap("Down");
    m_hardware.tap("Return");
    EXPECT_TRUE(eventually(5s, [&] { return windows() == before; }));
}

} // namespace orvane::tests
