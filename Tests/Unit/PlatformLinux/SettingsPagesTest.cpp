#include "PlatformLinux/Session/SettingsPages.h"

#include <gmock/gmock.h>

namespace orvane::tests {

namespace {

const QString page = u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_qs;

QString pageOf(const char* anchor)
{
    return page.section(u'?', 0, 0) + u'?' + QLatin1StringView(anchor);
}

QStringList programs(const QList<SettingsCommand>& commands)
{
    QStringList names;
    for (const SettingsCommand& command : commands)
        names.append(command.program);
    return names;
}

} // namespace

TEST(SettingsPages, TheSessionsDesktopGoesFirstAndThePageBeforeTheFrontPage)
{
    const auto commands = settingsCommands(page, {u"XFCE"_qs});
    ASSERT_GE(commands.size(), 2);
    EXPECT_EQ(commands[0].program, u"xfce4-accessibility-settings"_qs);
    EXPECT_EQ(commands[1].program, u"xfce4-settings-manager"_qs);
}

TEST(SettingsPages, APageOfABiggerProgramIsItsArgument)
{
    const auto commands = settingsCommands(page, {u"ubuntu"_qs, u"GNOME"_qs});
    ASSERT_FALSE(commands.isEmpty());
    EXPECT_EQ(commands[0], (SettingsCommand{u"gnome-control-center"_qs, {u"universal-access"_qs}}));
}

TEST(SettingsPages, AProgramThatRunsOnItsOwnDesktopAloneIsNotTriedElsewhere)
{
    EXPECT_FALSE(programs(settingsCommands(page, {u"XFCE"_qs})).contains(u"gnome-control-center"_qs));
    EXPECT_FALSE(programs(settingsCommands(page, {})).contains(u"cinnamon-settings"_qs));
}

TEST(SettingsPages, AnUnknownDesktopGetsWhatRunsAnywhere)
{
    EXPECT_TRUE(programs(settingsCommands(page, {u"i3"_qs})).contains(u"systemsettings"_qs));
}

TEST(SettingsPages, EachOfTheFourPagesHasAProgramOnEachBigDesktop)
{
    for (const char* anchor :
         {"Privacy_Accessibility", "Privacy_ListenEvent", "Privacy_ScreenCapture", "Privacy_Automation"}) {
        for (const char* desktop : {"XFCE", "GNOME", "X-Cinnamon", "MATE", "KDE"}) {
            const auto front = settingsCommands(pageOf(anchor), {QLatin1StringView(desktop)});
            ASSERT_GE(front.size(), 2) << anchor << desktop;
            EXPECT_NE(front[0], front[1]) << anchor << desktop;
        }
    }
}

TEST(SettingsPages, APageThatNobodyKnowsHasNone)
{
    EXPECT_THAT(settingsCommands(pageOf("Privacy_Moods"), {u"XFCE"_qs}), ::testing::IsEmpty());
    EXPECT_THAT(settingsCommands(page.section(u'?', 0, 0), {u"XFCE"_qs}), ::testing::IsEmpty());
}

TEST(SettingsPages, OtherSchemesAreNotSettings)
{
    EXPECT_TRUE(isSettingsURL(page));
    EXPECT_FALSE(isSettingsURL(u"https://example.org/?Privacy_Accessibility"_qs));
    EXPECT_THAT(settingsCommands(u"https://example.org/?Privacy_Accessibility"_qs, {u"XFCE"_qs}),
                ::testing::IsEmpty());
}

} // namespace orvane::tests
