// The program in a Wayland session: what would work by half is off and says why, and the rest works.
#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/ShellFixture.h"
#include "Desktop/Support/WaylandDesktop.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

/// The parameter is the platform that the person has chosen for programs of the toolkit; null for none.
class WaylandTest : public ShellDesktopTest, public testing::WithParamInterface<const char*> {
protected:
    void startOnWayland(const Stored& stored)
    {
        ASSERT_TRUE(m_desktop.isReady());
        QMap<QString, QString> environment = m_desktop.environment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QString::fromLatin1(GetParam()));
        m_program = std::make_unique<Program>(
            Program::Start{.defaults = defaults(stored), .environment = environment});
        ASSERT_TRUE(program().waitUntilReady());
    }
    bool says(const char* pattern)
    {
        return program().waitForLog(QRegularExpression(QString::fromLatin1(pattern))).has_value();
    }

    WaylandDesktop m_desktop;
};

INSTANTIATE_TEST_SUITE_P(Toolkit, WaylandTest, testing::Values(nullptr, "wayland"),
                         [](const auto& test) { return std::string(test.param ? test.param : "asItIs"); });

} // namespace

TEST_P(WaylandTest, KeysWindowsAndCopiesAreLeftAloneWithTheirReasonsAndAwakeWorks)
{
    startOnWayland({.enabled = {QStringLiteral("snapzones"), QStringLiteral("keyswap"),
                                QStringLiteral("awake"), QStringLiteral("clipboardhistory")},
                    .more = {{QStringLiteral("net.lindenrow.orvane.awake.awakeOnLaunch"), true}}});
    EXPECT_TRUE(becomesAwake());
    const QString log = program().log().join(u'\n');
    for (const char* reason : {"move the windows of X11 programs alone", "see keys only while an X11 program",
                               "activate failed: In this Wayland session Orvane would miss what you copy"})
        EXPECT_TRUE(log.contains(QLatin1StringView(reason))) << reason;
}

TEST_P(WaylandTest, TheWindowSaysWhyOnThePageOfAFeature)
{
    startOnWayland({.enabled = {QStringLiteral("clipboardhistory")},
                    .more = {{QStringLiteral("app.homePage"),
                              QStringLiteral("net.lindenrow.orvane.clipboardhistory")}}});
    ASSERT_TRUE(says("activate failed: In this Wayland session"));
    QMap<QString, QString> environment = m_desktop.environment();
    const Program second({.environment = environment, .home = program().home()});
    const AccessibleTree tree(program().pid());
    const auto page = [&] { return tree.find("list item", QStringLiteral("Clipboard History")); };
    ASSERT_TRUE(eventually(20s, [&] { return page().has_value(); }));
    EXPECT_TRUE(eventually(20s, [&] {
        return std::ranges::any_of(tree.nodes(), [](const AccessibleNode& node) {
            return node.name.contains(QStringLiteral("miss what you copy"));
        });
    }));
}

// The kind of the login says nothing about the server that the program was started on.
TEST_F(ShellDesktopTest, ARealXServerBesideAWaylandLoginIsUsedInFull)
{
    m_program = std::make_unique<Program>(
        Program::Start{.defaults = defaults({.enabled = {QStringLiteral("keyswap")}}),
                       .environment = {{QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("wayland")},
                                       {QStringLiteral("WAYLAND_DISPLAY"), QStringLiteral("wayland-9")}}});
    ASSERT_TRUE(program().waitUntilReady());
    EXPECT_TRUE(
        eventually(20s, [&] { return statusMenu().find({QStringLiteral("Ctrl Shortcuts")}) != nullptr; }));
    EXPECT_TRUE(program().log().filter(QStringLiteral("Wayland")).isEmpty());
}

} // namespace orvane::tests
