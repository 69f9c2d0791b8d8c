// The first run as a person meets it: by mouse alone, by keys alone, or stopped in the middle; and the
// program that is started anew from it.
#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/Bus.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Logind.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/Tray.h"
#include "Desktop/Support/WindowManagersWord.h"
#include "Support/Eventually.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <csignal>

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

const QString button = QStringLiteral("push button");
const QString awakeID = QStringLiteral("net.lindenrow.orvane.awake");
const QString welcome = QStringLiteral("Welcome to Orvane");

class OnboardingDesktopTest : public testing::Test {
protected:
    void start(Program::Start options = {})
    {
        m_program = std::make_unique<Program>(std::move(options));
        ASSERT_TRUE(m_program->waitUntilReady());
    }

    /// True once the program shows something of this name.
    bool shows(const QString& name, const QString& role = {})
    {
        return eventually(15s, [&] { return find(name, role).has_value(); });
    }
    bool vanishes(const QString& name)
    {
        return eventually(15s, [&] { return !find(name); });
    }
    /// Returns the visible element with this name; with any role and description where none is given.
    [[nodiscard]] std::optional<AccessibleNode> find(const QString& name, const QString& role = {},
                                                     const QString& description = {}) const
    {
        for (const AccessibleNode& node : AccessibleTree(m_program->pid()).nodes()) {
            if (node.name == name && (role.isEmpty() || node.role == role) &&
                (description.isEmpty() || node.description == description))
                return node;
        }
        return std::nullopt;
    }

    /// True once this button gets the keys.
    bool getsFocus(const QString& name)
    {
        return eventually(15s, [&] {
            const auto found = find(name, button);
            return found && found->isFocused();
        });
    }

    void click(const QString& name, const QString& role, const QString& description = {})
    {
        // A new window is moved before it is the active one, and one of its elements has the focus then.
        std::optional<QRect> place;
        ASSERT_TRUE(eventually(15s, [&] {
            const AccessibleTree tree(m_program->pid());
            const auto found = find(name, role, description);
            const std::optional<QRect> before =
                std::exchange(place, found ? std::optional(found->place) : std::nullopt);
            return place && before == place && tree.focused();
        })) << qPrintable(name);
        m_hardware.click(place->center());
    }

    [[nodiscard]] QJsonObject stored() const
    {
        QFile file(m_program->defaultsFile());
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                              : QJsonObject();
    }
    [[nodiscard]] bool hasOnboarded() const
    {
        return stored().value(QStringLiteral("hasOnboarded")).toBool();
    }
    [[nodiscard]] bool awakeIsStored() const
    {
        return stored()
            .value(QStringLiteral("Orvane.enabledCapabilities"))
            .toObject()
            .value(awakeID)
            .toBool();
    }
    /// Awake has a status item of its own exactly while it is active.
    bool awakeBecomesActive(qint64 pid)
    {
        return eventually(10s, [&] {
            for (const TrayItem& item : m_tray.itemsOf(pid)) {
                if (item.toolTip == QStringLiteral("Orvane Awake"))
                    return true;
            }
            return false;
        });
    }

    Screen m_screen;
    Hardware m_hardware;
    Tray m_tray;
    std::unique_ptr<Program> m_program;
};

} // namespace

TEST_F(OnboardingDesktopTest, AFirstStartShowsTheWelcome)
{
    start();
    ASSERT_TRUE(shows(welcome));
    EXPECT_TRUE(find(QStringLiteral("Continue"), button));
    EXPECT_TRUE(find(QStringLiteral("Page 1 of 3")));
    EXPECT_FALSE(find(QStringLiteral("Back"), button));
    EXPECT_FALSE(hasOnboarded());
}

TEST_F(OnboardingDesktopTest, ByMouseAloneAFeatureTurnedOnIsActiveAfterGettingStarted)
{
    start();
    click(QStringLiteral("Continue"), button);
    ASSERT_TRUE(shows(QStringLiteral("Permissions")));
    EXPECT_TRUE(find(QStringLiteral("Quit & Reopen"), button));
    click(QStringLiteral("Back"), button);
    ASSERT_TRUE(shows(welcome));
    click(QStringLiteral("Continue"), button);
    ASSERT_TRUE(shows(QStringLiteral("Permissions")));
    click(QStringLiteral("Continue"), button);
    ASSERT_TRUE(shows(QStringLiteral("Choose your features")));
    EXPECT_FALSE(find(QStringLiteral("Continue"), button));

    click(QStringLiteral("Awake"), QStringLiteral("check box"));
    EXPECT_TRUE(awakeBecomesActive(m_program->pid()));
    EXPECT_TRUE(eventually(10s, [&] {
        const auto found = find(QStringLiteral("Awake"), QStringLiteral("check box"));
        return found && found->isChecked();
    }));
    EXPECT_FALSE(hasOnboarded());
    click(QStringLiteral("Get Started"), button);
    EXPECT_TRUE(vanishes(QStringLiteral("Choose your features")));
    EXPECT_TRUE(eventually(10s, [&] { return hasOnboarded() && awakeIsStored(); }));
    EXPECT_TRUE(awakeBecomesActive(m_program->pid()));
}

TEST_F(OnboardingDesktopTest, ByKeysAloneToo)
{
    start();
    ASSERT_TRUE(shows(welcome));
    ASSERT_TRUE(getsFocus(QStringLiteral("Continue")));
    m_hardware.tap("Return");
    ASSERT_TRUE(shows(QStringLiteral("Permissions")));
    m_hardware.tap("Return");
    ASSERT_TRUE(shows(QStringLiteral("Choose your features")));
    const auto awakeHasFocus = [&] {
        const auto found = find(QStringLiteral("Awake"), QStringLiteral("check box"));
        return found && found->isFocused();
    };
    for (int step = 0; step < 30 && !awakeHasFocus(); ++step)
        m_hardware.tap("Tab");
    ASSERT_TRUE(eventually(10s, awakeHasFocus));
    m_hardware.tap("space");
    EXPECT_TRUE(awakeBecomesActive(m_program->pid()));
    m_hardware.tap("Return");
    EXPECT_TRUE(eventually(10s, [&] { return hasOnboarded(); }));
    EXPECT_TRUE(vanishes(QStringLiteral("Choose your features")));
    EXPECT_TRUE(awakeIsStored()) << "Return doesn't press the switch";
}

TEST_F(OnboardingDesktopTest, LeftInTheMiddleItBeginsAgainAndWhatWasTurnedOnStays)
{
    start();
    click(QStringLiteral("Continue"), button);
    click(QStringLiteral("Continue"), button);
    click(QStringLiteral("Awake"), QStringLiteral("check box"));
    ASSERT_TRUE(awakeBecomesActive(m_program->pid()));
    const auto home = m_program->home();
    m_program->signal(SIGTERM);
    ASSERT_TRUE(m_program->wait());

    start({.home = home});
    EXPECT_TRUE(shows(welcome));
    EXPECT_TRUE(awakeBecomesActive(m_program->pid()));
    EXPECT_FALSE(hasOnboarded());
}

TEST_F(OnboardingDesktopTest, WithNothingTurnedOnItStillFinishes)
{
    start();
    ASSERT_TRUE(shows(welcome));
    ASSERT_TRUE(getsFocus(QStringLiteral("Continue")));
    m_hardware.tap("Return");
    ASSERT_TRUE(shows(QStringLiteral("Permissions")));
    m_hardware.tap("Return");
    ASSERT_TRUE(shows(QStringLiteral("Choose your features")));
    m_hardware.tap("Return");
    EXPECT_TRUE(eventually(10s, [&] { return hasOnboarded(); }));
    EXPECT_TRUE(vanishes(QStringLiteral("Choose your features")));
    const auto items = m_tray.itemsOf(m_program->pid());
    ASSERT_EQ(items.size(), 1);
    const DBusMenu menu = items.first().menu();
    static_cast<void>(menu.aboutToShow());
    const auto layout = menu.layout();
    ASSERT_TRUE(layout);
    EXPECT_TRUE(layout->find({QStringLiteral("No features are on")}));
}

TEST_F(OnboardingDesktopTest, AFinishedFirstRunIsNotShownAgain)
{
    start({.firstRun = Program::FirstRun::done});
    EXPECT_TRUE(eventually(10s, [&] { return m_tray.itemsOf(m_program->pid()).size() == 1; }));
    EXPECT_FALSE(m_screen.window(m_program->pid(), QStringLiteral("Orvane")));
}

TEST_F(OnboardingDesktopTest, APermissionThatComesMeanwhileShows)
{
    WindowManagersWord word;
    start({});
    click(QStringLiteral("Continue"), button);
    const auto saysWhy = [&] {
        const auto nodes = AccessibleTree(m_program->pid()).nodes();
        return std::ranges::any_of(nodes, [](const AccessibleNode& found) {
            return found.name.startsWith(QStringLiteral("Windows of other programs can't be moved"));
        });
    };
    ASSERT_TRUE(shows(QStringLiteral("Permissions")));
    EXPECT_FALSE(saysWhy()) << "there is a window manager";
    word.remove();
    ASSERT_TRUE(eventually(10s, saysWhy));
    word.restore();
    EXPECT_TRUE(eventually(10s, [&] { return !saysWhy(); })) << "it doesn't show as granted";
}

namespace {

class RelaunchDesktopTest : public OnboardingDesktopTest {
protected:
    ~RelaunchDesktopTest() override
    {
        if (m_successor <= 0)
            return;
        ::kill(static_cast<pid_t>(m_successor), SIGTERM);
        EXPECT_TRUE(eventually(10s, [] { return owner() == 0; }));
    }

    static QByteArray everythingOn()
    {
        return R"({"Orvane.enabledCapabilities": {"net.lindenrow.orvane.awake": true,)"
               R"( "net.lindenrow.orvane.keyswap": true},)"
               R"( "net.lindenrow.orvane.awake.awakeOnLaunch": true,)"
               R"( "KeyboardShortcuts_awake.toggle": "{\"carbonKeyCode\":38,\"carbonModifiers\":6144}"})";
    }
    static qint64 owner() { return processOnSessionBus(QStringLiteral("net.lindenrow.orvane")); }
    static int locks()
    {
        int count = 0;
        for (const Inhibitor& inhibitor : inhibitors().value_or(QList<Inhibitor>()))
            count += inhibitor.why == QStringLiteral("Orvane Awake") ? 1 : 0;
        return count;
    }
    void pressControlOptionJ()
    {
        for (const char* key : {"Control_L", "Alt_L", "j"})
            m_hardware.press(key);
        for (const char* key : {"j", "Alt_L", "Control_L"})
            m_hardware.release(key);
    }
    /// Presses "Quit & Reopen" on the page of permissions.
    void relaunch()
    {
        click(QStringLiteral("Continue"), button);
        click(QStringLiteral("Quit & Reopen"), button);
    }
    /// True once another process than the old one owns the name.
    bool isSucceeded()
    {
        const bool succeeded = eventually(20s, [&] {
            const qint64 present = owner();
            m_successor = present != m_program->pid() ? present : 0;
            return m_successor > 0;
        });
        return succeeded;
    }

    qint64 m_successor = 0;
};

} // namespace

TEST_F(RelaunchDesktopTest, ANewProcessTakesEverythingOver)
{
    start({.defaults = everythingOn()});
    ASSERT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("Keyboard remapping active"))));
    ASSERT_TRUE(awakeBecomesActive(m_program->pid()));
    ASSERT_TRUE(eventually(10s, [] { return locks() == 1; }));

    relaunch();
    ASSERT_TRUE(isSucceeded());
    const auto end = m_program->wait();
    ASSERT_TRUE(end) << "the old process stays";
    EXPECT_EQ(end->code, 0);
    EXPECT_EQ(end->signal, 0);

    EXPECT_TRUE(awakeBecomesActive(m_successor));
    EXPECT_TRUE(eventually(10s, [&] { return m_tray.itemsOf(m_successor).size() == 2; }));
    EXPECT_TRUE(m_tray.itemsOf(m_program->pid()).isEmpty());
    EXPECT_TRUE(eventually(10s, [] { return locks() == 1; }));
    EXPECT_TRUE(eventually(10s, [&] {
        return m_program->log().filter(QStringLiteral("Keyboard remapping active")).size() == 2;
    })) << "the new one's tap isn't active";
    pressControlOptionJ();
    EXPECT_TRUE(eventually(10s, [] { return locks() == 0; })) << "the new one has no hot key";
    EXPECT_TRUE(m_program->log().filter(QStringLiteral(" error ")).isEmpty());
    EXPECT_TRUE(eventually(10s, [] { return OtherClient().keysDown().isEmpty(); }))
        << "keys are left pressed";
    EXPECT_TRUE(eventually(10s, [&] {
        return m_screen.window(m_successor, QStringLiteral("Orvane")).has_value();
    })) << "the first run isn't finished, so it begins again";
}

TEST_F(RelaunchDesktopTest, AFurtherStartReachesTheNewProcess)
{
    start({.defaults = everythingOn()});
    relaunch();
    ASSERT_TRUE(isSucceeded());
    ASSERT_TRUE(m_program->wait());
    Program further({.home = m_program->home()});
    const auto end = further.wait();
    ASSERT_TRUE(end) << "it stays beside the new one";
    EXPECT_EQ(end->code, 0);
    EXPECT_EQ(owner(), m_successor);
}

TEST_F(RelaunchDesktopTest, WhenTheProgramsFileIsGoneItSaysSoAndQuits)
{
    const QTemporaryDir directory;
    const QString copy = directory.filePath(QStringLiteral("orvane"));
    ASSERT_TRUE(QFile::copy(Program::builtProgram(), copy));
    start({.executable = copy});
    ASSERT_TRUE(shows(welcome));
    ASSERT_TRUE(QFile::remove(copy));
    relaunch();
    EXPECT_TRUE(m_program->waitForLog(QRegularExpression(QStringLiteral("ends without a successor"))));
    const auto end = m_program->wait();
    ASSERT_TRUE(end);
    EXPECT_EQ(end->code, 0);
    EXPECT_EQ(owner(), 0);
}

} // namespace orvane::tests
