// Awake as a person uses it: the built program on a real panel, with hardware clicks and keys.
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Logind.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/ScreenSaver.h"
#include "Desktop/Support/Tray.h"
#include "Support/Eventually.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

const QString awakeToolTip = QStringLiteral("Orvane Awake");

QByteArray defaults(QVariantMap awakeSettings, bool awakeIsEnabled = true)
{
    QVariantMap all{{QStringLiteral("hasOnboarded"), true}};
    if (awakeIsEnabled)
        all[QStringLiteral("Orvane.enabledCapabilities")] =
            QVariantMap{{QStringLiteral("net.lindenrow.orvane.awake"), true}};
    for (auto it = awakeSettings.begin(); it != awakeSettings.end(); ++it)
        all[QStringLiteral("net.lindenrow.orvane.awake.") + it.key()] = it.value();
    return QJsonDocument(QJsonObject::fromVariantMap(all)).toJson();
}

QByteArray awakeOnLaunch()
{
    return defaults({{QStringLiteral("awakeOnLaunch"), true}});
}

/// Returns the kinds of lock that Orvane holds with logind, as one string; empty when it holds none.
QString heldLocks()
{
    QStringList locks;
    for (const Inhibitor& inhibitor : inhibitors().value_or(QList<Inhibitor>())) {
        if (inhibitor.why == QStringLiteral("Orvane Awake") && inhibitor.who == QStringLiteral("Orvane") &&
            inhibitor.mode == QStringLiteral("block"))
            locks.append(inhibitor.what);
    }
    return locks.join(QLatin1Char(' '));
}

class AwakeDesktopTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(eventually(10s, [] { return heldLocks().isEmpty(); }));
    }

    void TearDown() override { EXPECT_TRUE(closeMenus(m_screen, m_hardware)); }

    void start(QByteArray content, std::shared_ptr<PrivateHome> home = std::make_shared<PrivateHome>())
    {
        Program::Start options;
        options.defaults = std::move(content);
        options.home = std::move(home);
        m_program = std::make_unique<Program>(options);
        ASSERT_TRUE(m_program->waitUntilReady());
    }

    Program& program() { return *m_program; }

    bool locksBecome(const QString& expected)
    {
        return eventually(10s, [&] { return heldLocks() == expected; });
    }

    /// Returns the item of Awake once the panel shows it.
    TrayItem awakeItem()
    {
        std::optional<TrayItem> item;
        EXPECT_TRUE(eventually(10s, [&] {
            item = findItem(awakeToolTip);
            return item.has_value();
        })) << "no status item of Awake";
        return item.value_or(TrayItem());
    }

    std::optional<TrayItem> findItem(const QString& toolTip)
    {
        for (const TrayItem& item : m_tray.itemsOf(m_program->pid())) {
            if (item.toolTip == toolTip)
                return item;
        }
        return std::nullopt;
    }

    /// Returns the item's place once every item of the program has one: an item that comes later moves the
    /// others.
    std::optional<QRect> place(const TrayItem& item)
    {
        const QList<TrayItem> items = m_tray.itemsOf(m_program->pid());
        if (!findItem(QStringLiteral("Orvane")))
            return std::nullopt;
        QList<QRect> places;
        for (const TrayItem& each : items) {
            const auto found = m_tray.place(m_screen, each);
            if (!found || places.contains(*found))
                return std::nullopt;
            places.append(*found);
        }
        return m_tray.place(m_screen, item);
    }

    void click(const TrayItem& item, Button button)
    {
        // A menu that is still closing would take the click.
        ASSERT_TRUE(eventually(10s, [&] { return m_screen.openMenus().isEmpty(); }));
        std::optional<QRect> first;
        ASSERT_TRUE(eventually(10s, [&] {
            const auto before = std::exchange(first, place(item));
            return first && before == first;
        })) << "the panel doesn't show the item";
        m_hardware.click(first->center(), button);
    }

    QVariant stored(const char* key)
    {
        QFile file(m_program->defaultsFile());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QJsonDocument::fromJson(file.readAll())
            .object()
            .value(QStringLiteral("net.lindenrow.orvane.awake.") + QLatin1String(key))
            .toVariant();
    }

    Screen m_screen;
    Hardware m_hardware;
    Tray m_tray;
    std::unique_ptr<Program> m_program;
};

} // namespace

TEST_F(AwakeDesktopTest, TheStoredSetIsHeldAfterTheStart)
{
    start(awakeOnLaunch());
    EXPECT_TRUE(locksBecome(QStringLiteral("idle"))) << heldLocks().toStdString();
}

TEST_F(AwakeDesktopTest, WhileLogindIsStuckItShowsAsleepAndHoldsAsSoonAsItAnswers)
{
    {
        const StuckLogind stuck;
        start(awakeOnLaunch());
        ASSERT_TRUE(
            program().waitForLog(QRegularExpression(QStringLiteral("Failed to create power assertion"))));
        EXPECT_TRUE(eventually(10s, [&] { return awakeItem().title == QStringLiteral("Not kept awake"); }));
    }
    EXPECT_TRUE(locksBecome(QStringLiteral("idle"))) << heldLocks().toStdString();
    EXPECT_TRUE(eventually(10s, [&] { return awakeItem().title == QStringLiteral("Awake"); }));
}

TEST_F(AwakeDesktopTest, WithoutTheDisplayTheMachineIsHeldAllTheSame)
{
    start(defaults({{QStringLiteral("awakeOnLaunch"), true}, {QStringLiteral("keepDisplayAwake"), false}}));
    EXPECT_TRUE(locksBecome(QStringLiteral("idle"))) << heldLocks().toStdString();
}

TEST_F(AwakeDesktopTest, AClickOnTheStatusItemTakesItAwayAndAnotherBringsItBack)
{
    start(awakeOnLaunch());
    ASSERT_TRUE(locksBecome(QStringLiteral("idle")));
    const TrayItem item = awakeItem();
    EXPECT_EQ(item.title, QStringLiteral("Awake"));
    EXPECT_EQ(item.id, QStringLiteral("net.lindenrow.orvane.awake"));
    click(item, Button::left);
    EXPECT_TRUE(locksBecome(QString()));
    EXPECT_TRUE(eventually(10s, [&] { return awakeItem().title == QStringLiteral("Not kept awake"); }));
    click(item, Button::left);
    EXPECT_TRUE(locksBecome(QStringLiteral("idle")));
}

TEST_F(AwakeDesktopTest, TheMenuOfTheRightClickStartsAPeriodAndMakesItTheDefault)
{
    start(defaults({}));
    const TrayItem item = awakeItem();
    click(item, Button::right);
    const std::optional<MenuNode> menu = item.menu().layout();
    ASSERT_TRUE(menu);
    EXPECT_THAT(menu->labels(),
                testing::ElementsAre(QStringLiteral("Keep Awake"), QStringLiteral("-"),
                                     QStringLiteral("Keep awake for…"), QStringLiteral("Until I turn it off"),
                                     QStringLiteral("30 minutes"), QStringLiteral("1 hour"),
                                     QStringLiteral("2 hours"), QStringLiteral("4 hours"),
                                     QStringLiteral("-"), QStringLiteral("Awake Settings…")));
    EXPECT_FALSE(menu->find({QStringLiteral("Keep awake for…")})->enabled);
    EXPECT_TRUE(heldLocks().isEmpty()) << "opening the menu toggles nothing";

    ASSERT_TRUE(chooseInOpenMenu(m_screen, m_hardware, *menu, {QStringLiteral("30 minutes")}));
    EXPECT_TRUE(locksBecome(QStringLiteral("idle")));
    EXPECT_TRUE(eventually(10s, [&] { return stored("defaultDuration") == QStringLiteral("minutes30"); }));
    EXPECT_TRUE(
        program().waitForLog(QRegularExpression(QStringLiteral("Awake on \\(minutes30, display=true\\)"))));

    click(item, Button::right);
    std::optional<MenuNode> awake;
    EXPECT_TRUE(eventually(10s, [&] {
        awake = item.menu().layout();
        return awake && !awake->labels().isEmpty() &&
               awake->labels().first() == QStringLiteral("Turn Off Awake");
    }));
    EXPECT_TRUE(awake->find({QStringLiteral("30 minutes")})->on);
    EXPECT_FALSE(awake->find({QStringLiteral("1 hour")})->on);
    ASSERT_TRUE(chooseInOpenMenu(m_screen, m_hardware, *awake, {QStringLiteral("Turn Off Awake")}));
    EXPECT_TRUE(locksBecome(QString()));
}

TEST_F(AwakeDesktopTest, ControlClickOpensTheMenuInsteadOfToggling)
{
    start(awakeOnLaunch());
    ASSERT_TRUE(locksBecome(QStringLiteral("idle")));
    const TrayItem item = awakeItem();
    m_hardware.press("Control_L");
    click(item, Button::left);
    EXPECT_TRUE(eventually(10s, [&] { return !m_screen.openMenus().isEmpty(); }));
    m_hardware.release("Control_L");
    EXPECT_EQ(heldLocks(), QStringLiteral("idle"));
    m_hardware.tap("Escape");
    EXPECT_TRUE(eventually(10s, [&] { return m_screen.openMenus().isEmpty(); }));
    click(item, Button::left);
    EXPECT_TRUE(locksBecome(QString()));
}

TEST_F(AwakeDesktopTest, AwakeSettingsShowsTheHomeWindow)
{
    start(defaults({}));
    const TrayItem item = awakeItem();
    click(item, Button::right);
    const std::optional<MenuNode> menu = item.menu().layout();
    ASSERT_TRUE(menu);
    ASSERT_TRUE(chooseInOpenMenu(m_screen, m_hardware, *menu, {QStringLiteral("Awake Settings…")}));
    EXPECT_TRUE(eventually(
        10s, [&] { return m_screen.window(program().pid(), QStringLiteral("Orvane")).has_value(); }));
}

TEST_F(AwakeDesktopTest, KillingTheProgramLeavesNothingHeldAndTheNextStartRestoresTheSet)
{
    start(awakeOnLaunch());
    ASSERT_TRUE(locksBecome(QStringLiteral("idle")));
    const auto home = program().home();
    QFile file(program().defaultsFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();

    program().kill9();
    ASSERT_TRUE(program().wait());
    EXPECT_TRUE(locksBecome(QString()));

    start(content, home);
    EXPECT_TRUE(locksBecome(QStringLiteral("idle")));
}

TEST_F(AwakeDesktopTest, AnEndBySignalRightAfterAChangeLosesNothing)
{
    struct Choice {
        int signal;
        const char* title;
        const char* stored;
    };
    for (const Choice& choice : {Choice{SIGTERM, "30 minutes", "minutes30"},
                                 Choice{SIGINT, "1 hour", "hours1"}, Choice{SIGHUP, "2 hours", "hours2"}}) {
        start(defaults({}));
        const TrayItem item = awakeItem();
        click(item, Button::right);
        const std::optional<MenuNode> menu = item.menu().layout();
        ASSERT_TRUE(menu);
        ASSERT_TRUE(chooseInOpenMenu(m_screen, m_hardware, *menu, {QString::fromLatin1(choice.title)}));
        ASSERT_TRUE(program().waitForLog(QRegularExpression(QStringLiteral("Awake on"))));
        program().signal(choice.signal);
        ASSERT_TRUE(program().wait());
        EXPECT_EQ(stored("defaultDuration"), QString::fromLatin1(choice.stored));
    }
}

TEST_F(AwakeDesktopTest, AnOrderlyEndReleasesToo)
{
    start(awakeOnLaunch());
    ASSERT_TRUE(locksBecome(QStringLiteral("idle")));
    program().signal(SIGTERM);
    const auto exit = program().wait();
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->code, 0);
    EXPECT_EQ(exit->signal, 0);
    EXPECT_TRUE(locksBecome(QString()));
}

TEST_F(AwakeDesktopTest, TheScreenSaverStaysOffWhileAwakeAndComesOnOtherwise)
{
    constexpr auto timeout = 1s;
    ScreenSaver saver;
    start(awakeOnLaunch());
    ASSERT_TRUE(locksBecome(QStringLiteral("idle")));
    saver.setTimeout(timeout);
    saver.reset();
    // Waits three times as long without any input; the display must not go dark.
    ASSERT_TRUE(eventually(15s, [&] { return saver.idle() >= 3 * timeout; }));
    EXPECT_EQ(saver.state(), ScreenSaver::State::off);

    click(awakeItem(), Button::left);
    ASSERT_TRUE(locksBecome(QString()));
    EXPECT_TRUE(eventually(15s, [&] { return saver.state() == ScreenSaver::State::on; }));
}

TEST_F(AwakeDesktopTest, WithItsSettingOffThereIsNoStatusItem)
{
    start(defaults({{QStringLiteral("showMenuBarIcon"), false}, {QStringLiteral("awakeOnLaunch"), true}}));
    ASSERT_TRUE(locksBecome(QStringLiteral("idle")));
    EXPECT_TRUE(eventually(10s, [&] { return findItem(QStringLiteral("Orvane")).has_value(); }));
    EXPECT_FALSE(findItem(awakeToolTip).has_value());
}

TEST_F(AwakeDesktopTest, TheSuitesMenuShowsAndSwitchesTheState)
{
    start(defaults({}));
    std::optional<TrayItem> item;
    ASSERT_TRUE(eventually(10s, [&] {
        item = findItem(QStringLiteral("Orvane"));
        return item.has_value();
    }));
    click(*item, Button::left);
    std::optional<MenuNode> menu;
    ASSERT_TRUE(eventually(10s, [&] {
        menu = item->menu().layout();
        return menu && menu->find({QStringLiteral("Awake"), QStringLiteral("Keep Awake")});
    }));
    EXPECT_THAT(menu->labels(),
                testing::ElementsAre(QStringLiteral("Orvane"), QStringLiteral("-"), QStringLiteral("Awake"),
                                     QStringLiteral("-"), QStringLiteral("Open Orvane…"),
                                     QStringLiteral("Quit Orvane")));
    ASSERT_TRUE(chooseInOpenMenu(m_screen, m_hardware, *menu,
                                 {QStringLiteral("Awake"), QStringLiteral("Keep Awake")}));
    EXPECT_TRUE(locksBecome(QStringLiteral("idle")));

    click(*item, Button::left);
    ASSERT_TRUE(eventually(10s, [&] {
        menu = item->menu().layout();
        return menu && menu->find({QStringLiteral("Awake"), QStringLiteral("Let Computer Sleep")});
    }));
    ASSERT_TRUE(chooseInOpenMenu(m_screen, m_hardware, *menu, {QStringLiteral("Quit Orvane")}));
    const auto exit = program().wait();
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->code, 0);
}

} // namespace orvane::tests
