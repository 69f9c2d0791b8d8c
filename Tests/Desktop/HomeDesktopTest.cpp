// The home window of the built program, used by mouse and by keyboard alone, and read as assistive technology
// reads it.
#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/Bus.h"
#include "Desktop/Support/Peer.h"
#include "Desktop/Support/ShellFixture.h"
#include "Desktop/Support/WindowManagersWord.h"
#include "Support/Eventually.h"

#include <QCoreApplication>
#include <QDBusVariant>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <cstdlib>
#include <span>
#include <string_view>
#include <utility>

#include <gmock/gmock.h>
#include <xcb/xcb.h>

namespace orvane::tests {
namespace {

const QString orvane = QStringLiteral("Orvane");
const QString awake = QStringLiteral("Awake");
const QString ctrlShortcuts = QStringLiteral("Ctrl Shortcuts");
const QString general = QStringLiteral("General");
const QString manage = QStringLiteral("Manage in General");

struct Freed {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, Freed>;

class HomeDesktopTest : public ShellDesktopTest {
protected:
    void TearDown() override
    {
        m_tree.reset();
        ShellDesktopTest::TearDown();
    }

    void openHome(const Stored& stored = {})
    {
        start(stored);
        showHome();
    }
    void showHome()
    {
        m_tree = std::make_unique<AccessibleTree>(program().pid());
        startAgain();
        // A new window is moved before it comes to rest.
        std::optional<QRect> place;
        ASSERT_TRUE(eventually(10s, [&] {
            const auto found = node("list item", general);
            const auto before = std::exchange(place, found ? std::optional(found->place) : std::nullopt);
            return place && before == place;
        }));
    }
    /// Acts as a click on the program's entry in the desktop's menu.
    void startAgain()
    {
        Program second({.home = program().home()});
        ASSERT_TRUE(second.wait());
        ASSERT_TRUE(eventually(10s, [&] { return homeIsShown(); }));
    }

    std::optional<AccessibleNode> node(const char* role, const QString& name)
    {
        return m_tree->find(role, name);
    }
    bool shows(const char* role, const QString& name)
    {
        return eventually(10s, [&] { return node(role, name).has_value(); });
    }
    void click(const char* role, const QString& name)
    {
        ASSERT_TRUE(shows(role, name)) << qPrintable(name);
        m_hardware.click(node(role, name)->place.center());
    }
    bool isChecked(const QString& name)
    {
        const auto found = node("check box", name);
        return found && found->isChecked();
    }
    QString stateOf(const QString& row)
    {
        const auto found = node("list item", row);
        return found ? found->description : QString();
    }
    /// Returns role and name of the element with the focus.
    QString focused()
    {
        const auto found = m_tree->focused();
        return found ? found->role + QLatin1Char(' ') + found->name : QString();
    }
    bool getsFocus(const char* what)
    {
        return eventually(10s, [&] { return focused() == QLatin1String(what); });
    }
    /// Presses the key until this element has the focus; false when it doesn't get it in one round of the
    /// whole window.
    bool reach(const char* key, const char* what)
    {
        for (int step = 0; step < 40; ++step) {
            const QString before = focused();
            if (before == QLatin1String(what))
                return true;
            m_hardware.tap(key);
            if (!eventually(10s, [&] { return focused() != before; }))
                return false;
        }
        return false;
    }
    QJsonObject stored()
    {
        QFile file(program().defaultsFile());
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                              : QJsonObject();
    }
    bool isStoredAsEnabled(const char* capability)
    {
        const QJsonObject enabled = stored().value(QStringLiteral("Orvane.enabledCapabilities")).toObject();
        return enabled.value(QStringLiteral("net.lindenrow.orvane.") + QLatin1String(capability)).toBool();
    }
    enum class TaskBar { unknown, listed, leftOut };
    /// Returns what the home window's state tells programs that list windows.
    TaskBar taskBarEntry()
    {
        const auto window = m_screen.window(program().pid(), orvane);
        if (!window)
            return TaskBar::unknown;
        const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
            xcb_connect(nullptr, nullptr), &xcb_disconnect);
        const auto atom = [&](std::string_view name) {
            const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
                connection.get(),
                xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
                nullptr));
            return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        };
        const Reply<xcb_get_property_reply_t> state(xcb_get_property_reply(
            connection.get(),
            xcb_get_property(connection.get(), 0, window->id, atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 0, 64),
            nullptr));
        if (!state)
            return TaskBar::unknown;
        const auto* first = static_cast<const xcb_atom_t*>(xcb_get_property_value(state.get()));
        const std::span all(first, state->value_len);
        return std::ranges::find(all, atom("_NET_WM_STATE_SKIP_TASKBAR")) != all.end() ? TaskBar::leftOut
                                                                                       : TaskBar::listed;
    }
    void closeHome()
    {
        chord({"Alt_L", "F4"});
        ASSERT_TRUE(eventually(10s, [&] { return !homeIsShown(); }));
    }

    std::unique_ptr<AccessibleTree> m_tree;
};

} // namespace

TEST_F(HomeDesktopTest, TheSidebarIsAListThatSaysEachState)
{
    openHome({.enabled = {QStringLiteral("awake")}});
    EXPECT_TRUE(eventually(10s, [&] { return stateOf(awake) == QStringLiteral("On"); }));
    EXPECT_EQ(stateOf(ctrlShortcuts), QStringLiteral("Off"));
    EXPECT_EQ(stateOf(general), QString());
    EXPECT_TRUE(node("list item", general)->isSelected()) << "a fresh window shows the general page";
    EXPECT_TRUE(shows("check box", QStringLiteral("Launch Orvane at login")));
}

TEST_F(HomeDesktopTest, ATogglesClickSwitchesTheCapability)
{
    openHome({.more = {{QStringLiteral("net.lindenrow.orvane.awake.awakeOnLaunch"), true}}});
    click("list item", awake);
    click("check box", awake);
    EXPECT_TRUE(becomesAwake());
    EXPECT_TRUE(eventually(10s, [&] { return isChecked(awake) && stateOf(awake) == QStringLiteral("On"); }));
    EXPECT_TRUE(eventually(10s, [&] { return isStoredAsEnabled("awake"); }));

    click("check box", awake);
    EXPECT_TRUE(becomesAsleep());
    EXPECT_TRUE(eventually(10s, [&] { return stateOf(awake) == QStringLiteral("Off"); }));
    EXPECT_TRUE(eventually(10s, [&] { return !isStoredAsEnabled("awake"); }));
}

TEST_F(HomeDesktopTest, ByKeyboardAloneACapabilityIsFoundAndSwitchedOn)
{
    openHome({.more = {{QStringLiteral("net.lindenrow.orvane.awake.awakeOnLaunch"), true}}});
    // Keys that come before the window is the active one go elsewhere.
    ASSERT_TRUE(eventually(10s, [&] { return !focused().isEmpty(); }));
    ASSERT_TRUE(reach("Tab", "list item General")) << qPrintable(focused());
    m_hardware.tap("End");
    ASSERT_TRUE(getsFocus("list item Paste as Plain Text")) << qPrintable(focused());
    m_hardware.tap("Up");
    ASSERT_TRUE(getsFocus("list item Awake")) << qPrintable(focused());
    m_hardware.tap("Tab");
    ASSERT_TRUE(getsFocus("check box Awake")) << qPrintable(focused());
    m_hardware.tap("space");
    EXPECT_TRUE(becomesAwake());
    EXPECT_TRUE(eventually(10s, [&] { return isChecked(awake); }));
}

TEST_F(HomeDesktopTest, TheSettingsOfACapabilityThatIsOffDoNotReact)
{
    openHome();
    click("list item", awake);
    const QString setting = QStringLiteral("Start keeping awake when this feature turns on");
    ASSERT_TRUE(shows("check box", setting));
    EXPECT_FALSE(node("check box", setting)->isEnabled());
    EXPECT_TRUE(node("check box", QStringLiteral("Auto-start at launch"))->isEnabled());
    click("check box", awake);
    EXPECT_TRUE(eventually(10s, [&] { return node("check box", setting)->isEnabled(); }));
}

TEST_F(HomeDesktopTest, AModeChosenOnThePageOfCtrlShortcutsHoldsForTheNextKeys)
{
    openHome({.enabled = {QStringLiteral("keyswap")},
              .more = {{QStringLiteral("net.lindenrow.orvane.keyswap.mode"), QStringLiteral("off")}}});
    click("list item", ctrlShortcuts);
    click("radio button", QStringLiteral("Swap Ctrl and Super everywhere"));
    Peer editor(Peer::lineEdit());
    ASSERT_TRUE(editor.tells(QStringLiteral("focused")));
    m_hardware.tap("x");
    ASSERT_TRUE(editor.tells(QStringLiteral("text:x")));
    chord({"Super_L", "a"});
    EXPECT_TRUE(editor.tells(QStringLiteral("marked:x")));
}

TEST_F(HomeDesktopTest, ThePermissionRowsFollowTheDesktopWithinATick)
{
    openHome();
    const auto saysWhy = [&] {
        return std::ranges::any_of(m_tree->nodes(), [](const AccessibleNode& found) {
            return found.name.startsWith(QStringLiteral("Windows of other programs can't be moved"));
        });
    };
    EXPECT_FALSE(saysWhy());
    WindowManagersWord word;
    word.remove();
    EXPECT_TRUE(eventually(10s, saysWhy));
    word.restore();
    EXPECT_TRUE(eventually(10s, [&] { return !saysWhy(); }));
}

namespace {

/// Another name of the display, under which nobody answers until it is opened.
class LockedDisplay {
public:
    LockedDisplay() : m_real(qEnvironmentVariable("DISPLAY")) {}
    ~LockedDisplay() { QFile::remove(socket(m_locked)); }
    LockedDisplay(const LockedDisplay&) = delete;
    LockedDisplay& operator=(const LockedDisplay&) = delete;

    [[nodiscard]] const QString& real() const { return m_real; }
    [[nodiscard]] const QString& locked() const { return m_locked; }
    [[nodiscard]] bool open() { return QFile::link(socket(m_real), socket(m_locked)); }

private:
    static QString socket(const QString& display)
    {
        static const QRegularExpression number(QStringLiteral(":(\\d+)"));
        return QStringLiteral("/tmp/.X11-unix/X") + number.match(display).captured(1);
    }

    const QString m_real;
    const QString m_locked = QStringLiteral(":%1").arg(QCoreApplication::applicationPid() + 10'000);
};

} // namespace

TEST_F(HomeDesktopTest, ARequiredPermissionThatComesWhileThePageIsOpenMakesTheCapabilityActiveWithinATick)
{
    // The program has its windows, but may not listen: what it tries that with finds no server.
    LockedDisplay display;
    m_program = std::make_unique<Program>(
        Program::Start{.defaults = defaults({.enabled = {QStringLiteral("keyswap")}}),
                       .environment = {{QStringLiteral("DISPLAY"), display.locked()}},
                       .arguments = {QStringLiteral("-display"), display.real()}});
    ASSERT_TRUE(program().waitUntilReady());
    showHome();
    click("list item", ctrlShortcuts);
    ASSERT_TRUE(shows("label", QStringLiteral("Input Monitoring")));
    EXPECT_TRUE(
        eventually(10s, [&] { return stateOf(ctrlShortcuts) == QStringLiteral("Needs permission"); }));
    EXPECT_FALSE(isChecked(ctrlShortcuts));

    ASSERT_TRUE(display.open());
    click("push button", QStringLiteral("Grant"));
    EXPECT_TRUE(eventually(10s, [&] { return isChecked(ctrlShortcuts); }));
    EXPECT_EQ(stateOf(ctrlShortcuts), QStringLiteral("On"));
    EXPECT_TRUE(shows("push button", manage)) << "the banner says that all is granted";
    EXPECT_TRUE(program().waitForLog(QRegularExpression(QStringLiteral("Keyboard remapping active"))));
}

TEST_F(HomeDesktopTest, ManageInGeneralScrollsToThePermissionsEachTime)
{
    openHome();
    const auto top = [&] { return m_screen.window(program().pid(), orvane)->geometry.top(); };
    for (int time = 0; time < 2; ++time) {
        click("list item", ctrlShortcuts);
        click("push button", manage);
        ASSERT_TRUE(shows("label", QStringLiteral("Permissions")));
        EXPECT_TRUE(eventually(10s, [&] {
            const auto heading = node("label", QStringLiteral("Permissions"));
            return heading && heading->place.top() - top() < 80;
        })) << time;
        EXPECT_TRUE(node("list item", general)->isSelected());
        // Back to the top, as a person would.
        m_hardware.movePointer(node("label", QStringLiteral("Permissions"))->place.center());
        for (int notch = 0; notch < 20; ++notch)
            m_hardware.click(Button::wheelUp);
        ASSERT_TRUE(shows("check box", QStringLiteral("Launch Orvane at login")));
    }
}

TEST_F(HomeDesktopTest, AShortcutRecordedOnAChipShowsAtOnceAndFires)
{
    openHome({.enabled = {QStringLiteral("awake")}});
    click("list item", awake);
    click("push button", QStringLiteral("Toggle Keep Awake: Set shortcut"));
    ASSERT_TRUE(shows("dialog", QStringLiteral("Toggle Keep Awake")));
    m_hardware.tap("Tab");
    ASSERT_TRUE(eventually(10s, [&] {
        const QString focus = focused();
        return focus.endsWith(QStringLiteral("Toggle Keep Awake")) &&
               !focus.startsWith(QStringLiteral("dialog"));
    }));
    chord({"Control_L", "Alt_L", "k"});
    EXPECT_TRUE(shows("push button", QStringLiteral("Toggle Keep Awake: Ctrl+Alt+K")));
    EXPECT_TRUE(
        eventually(10s, [&] { return stored().contains(QStringLiteral("KeyboardShortcuts_awake.toggle")); }));
    EXPECT_TRUE(becomesAsleep()) << "recording it isn't using it";

    m_hardware.tap("Escape");
    EXPECT_TRUE(eventually(10s, [&] { return !node("dialog", QStringLiteral("Toggle Keep Awake")); }));
    chord({"Control_L", "Alt_L", "k"});
    EXPECT_TRUE(becomesAwake());
    chord({"Control_L", "Alt_L", "k"});
    EXPECT_TRUE(becomesAsleep());
}

TEST_F(HomeDesktopTest, ClosingHidesItAndAFurtherStartBringsTheSameWindowBack)
{
    openHome();
    click("list item", awake);
    ASSERT_TRUE(shows("check box", awake));
    const auto before = m_screen.window(program().pid(), orvane);
    closeHome();
    EXPECT_TRUE(program().isRunning());
    startAgain();
    EXPECT_TRUE(shows("check box", awake)) << "the page that was chosen";
    EXPECT_TRUE(eventually(10s, [&] {
        return m_screen.window(program().pid(), orvane)->geometry == before->geometry;
    })) << "where it was";
}

TEST_F(HomeDesktopTest, TheWindowFollowsTheDesktopsColoursWhileItIsOpen)
{
    openHome();
    const auto setTheme = [](const char* name) {
        return ask(QStringLiteral("org.xfce.Xfconf"), QStringLiteral("/org/xfce/Xfconf"),
                   QStringLiteral("org.xfce.Xfconf"), QStringLiteral("SetProperty"),
                   {QStringLiteral("xsettings"), QStringLiteral("/Net/ThemeName"),
                    QVariant::fromValue(QDBusVariant(QString::fromLatin1(name)))})
                   .type() == QDBusMessage::ReplyMessage;
    };
    const auto ground = [&] {
        const QRect place = m_screen.window(program().pid(), orvane)->geometry;
        return m_screen.picture({place.right() - 30, place.top() + 20, 1, 1}).pixelColor(0, 0).lightness();
    };
    ASSERT_TRUE(setTheme("Greybird"));
    ASSERT_TRUE(eventually(10s, [&] { return ground() > 200; }));
    ASSERT_TRUE(setTheme("Greybird-dark"));
    EXPECT_TRUE(eventually(10s, [&] { return ground() < 60; })) << ground();
    ASSERT_TRUE(setTheme("Greybird"));
    EXPECT_TRUE(eventually(10s, [&] { return ground() > 200; }));
}

TEST_F(HomeDesktopTest, WithoutTheMenuBarIconTheDockIconIsThere)
{
    openHome();
    EXPECT_FALSE(isChecked(QStringLiteral("Show in the task bar")));
    click("check box", QStringLiteral("Show icon in the system tray"));
    EXPECT_TRUE(eventually(10s, [&] { return isChecked(QStringLiteral("Show in the task bar")); }));
    EXPECT_FALSE(isChecked(QStringLiteral("Show icon in the system tray")));
    EXPECT_TRUE(eventually(10s, [&] { return m_tray.itemsOf(program().pid()).isEmpty(); }));
    click("check box", QStringLiteral("Show in the task bar"));
    EXPECT_TRUE(eventually(10s, [&] { return isChecked(QStringLiteral("Show icon in the system tray")); }));
    EXPECT_TRUE(eventually(10s, [&] { return !m_tray.itemsOf(program().pid()).isEmpty(); }));
}

TEST_F(HomeDesktopTest, AnOpenWindowIsListedAndMinimizesAndComesBackWhereItWas)
{
    openHome();
    EXPECT_TRUE(eventually(10s, [&] { return taskBarEntry() == TaskBar::listed; }));
    click("list item", awake);
    ASSERT_TRUE(eventually(10s, [&] { return node("list item", awake)->isSelected(); }));
    const QRect before = m_screen.window(program().pid(), orvane)->geometry;
    closeHome();
    const auto home = program().home();
    program().signal(SIGTERM);
    ASSERT_TRUE(program().wait());
    m_program = std::make_unique<Program>(Program::Start{.home = home});
    ASSERT_TRUE(program().waitUntilReady());
    showHome();
    EXPECT_TRUE(
        eventually(10s, [&] { return m_screen.window(program().pid(), orvane)->geometry == before; }));
    EXPECT_TRUE(eventually(10s, [&] { return node("list item", awake)->isSelected(); }));
}

} // namespace orvane::tests
