// The first run as a tree: its pages, its ways forward and back, and what it stores.
#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Onboarding/CapabilityPickerView.h"
#include "Orvane/Onboarding/PageDotsView.h"
#include "Orvane/Onboarding/WelcomeStepView.h"
#include "Orvane/Permissions/OrvaPermissionRow.h"
#include "Orvane/Permissions/PermissionChecklistView.h"
#include "Orvane/Permissions/PermissionRestartRow.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "Unit/Orvane/OnboardingFixture.h"

namespace orvane::tests {

using OnboardingTest = OnboardingFixture;

TEST_F(OnboardingTest, BeginsWithTheWelcome)
{
    const AnyView flow = makeFlow();
    ASSERT_EQ(flow.all<WelcomeStep>().size(), 1);
    const auto badge = flow.all<AppIconBadge>();
    ASSERT_EQ(badge.size(), 1);
    EXPECT_EQ(badge.first()->size, 84);
    EXPECT_EQ(badge.first()->shadow, BadgeShadow::soft);
    ASSERT_EQ(flow.all<OrvaneWordmark>().size(), 1);
    EXPECT_EQ(flow.all<OrvaneWordmark>().first()->lead, QStringLiteral("Welcome to "));
    EXPECT_EQ(texts(flow),
              QStringList{QStringLiteral("Bring the Windows habits you miss to your Mac — window switching,\n"
                                         "keyboard and mouse remapping, cut & paste, and more.\n"
                                         "Turn on only the features you want.")});
    EXPECT_TRUE(flow.all<PermissionChecklistView>().isEmpty());
    EXPECT_TRUE(flow.all<CapabilityPickerView>().isEmpty());
}

TEST_F(OnboardingTest, TheWelcomeLeadsToTheProductsSite)
{
    const auto links = makeFlow().all<OrvaTextButton>();
    ASSERT_EQ(links.size(), 1);
    EXPECT_EQ(links.first()->title, QStringLiteral("Learn more at ") + OrvaneBrand::siteName);
    links.first()->action();
    EXPECT_EQ(fake.workspace.openedURLs, QStringList{OrvaneBrand::websiteURL});
}

TEST_F(OnboardingTest, BackIsNotThereOnTheWelcomeAndGetStartedOnlyOnTheLastPage)
{
    const AnyView flow = makeFlow();
    const auto getsStarted = [&] { return button(flow, QStringLiteral("Get Started")) != nullptr; };
    EXPECT_FALSE(showsBack(flow));
    EXPECT_FALSE(getsStarted());
    press(flow, "Continue");
    EXPECT_EQ(step(flow), Step::permissions);
    EXPECT_TRUE(showsBack(flow));
    EXPECT_FALSE(getsStarted());
    press(flow, "Continue");
    EXPECT_EQ(step(flow), Step::capabilities);
    EXPECT_TRUE(showsBack(flow));
    EXPECT_TRUE(getsStarted());
    EXPECT_FALSE(button(flow, QStringLiteral("Continue")));
}

TEST_F(OnboardingTest, BackGoesToThePageBefore)
{
    const AnyView flow = makeFlow();
    press(flow, "Continue");
    press(flow, "Continue");
    press(flow, "Back");
    EXPECT_EQ(step(flow), Step::permissions);
    press(flow, "Back");
    EXPECT_EQ(step(flow), Step::welcome);
    press(flow, "Back");
    EXPECT_EQ(step(flow), Step::welcome);
}

TEST_F(OnboardingTest, TheDotsFollowThePage)
{
    const AnyView flow = makeFlow();
    const auto dots = flow.all<PageDots>();
    ASSERT_EQ(dots.size(), 1);
    EXPECT_EQ(dots.first()->count, 3);
    EXPECT_EQ(dots.first()->index.get(), 0);
    press(flow, "Continue");
    EXPECT_EQ(dots.first()->index.get(), 1);
    press(flow, "Continue");
    EXPECT_EQ(dots.first()->index.get(), 2);
}

TEST_F(OnboardingTest, GetStartedAloneSetsTheFlagAndWithNothingTurnedOnToo)
{
    const AnyView flow = makeFlow();
    press(flow, "Continue");
    press(flow, "Continue");
    EXPECT_FALSE(flag->hasOnboarded.get());
    press(flow, "Get Started");
    EXPECT_TRUE(flag->hasOnboarded.get());
    EXPECT_TRUE(registry->activeEntries().isEmpty());
}

TEST_F(OnboardingTest, TheChecklistHasEachPermissionInOrderAndThenTheRestartRow)
{
    const AnyView flow = makeFlow();
    press(flow, "Continue");
    const QStringList words = texts(flow);
    ASSERT_GE(words.size(), 2);
    EXPECT_EQ(words.at(0), QStringLiteral("Permissions"));
    EXPECT_EQ(words.at(1), QStringLiteral("Orvane's features need macOS privacy permissions. You can grant "
                                          "them now, or later when you turn each feature on."));
    const auto rows = flow.all<OrvaPermissionRow>();
    ASSERT_EQ(rows.size(), static_cast<qsizetype>(allSystemPermissions.size()));
    for (std::size_t index = 0; index < allSystemPermissions.size(); ++index) {
        const auto& row = *rows.at(static_cast<qsizetype>(index));
        EXPECT_EQ(row.permission, allSystemPermissions.at(index));
        EXPECT_EQ(row.level, std::nullopt);
        EXPECT_EQ(row.note, explanation(row.permission));
    }
    EXPECT_EQ(flow.all<PermissionRestartRow>().size(), 1);
    EXPECT_EQ(words.last(), QStringLiteral("Granted it but still shows off? macOS applies new permissions "
                                           "only after Orvane restarts."));
}

TEST_F(OnboardingTest, ThePickerHasACardForEachCapabilityInOrderOfRegistering)
{
    const AnyView flow = makeFlow();
    press(flow, "Continue");
    press(flow, "Continue");
    const QStringList words = texts(flow);
    ASSERT_GE(words.size(), 2);
    EXPECT_EQ(words.at(0), QStringLiteral("Choose your features"));
    EXPECT_EQ(words.at(1), QStringLiteral("Turn on what you want now — you can change any of this later from "
                                          "the Orvane window."));
    QStringList names;
    for (const auto& card : flow.all<CapabilityCard>()) {
        const AnyView view = *card;
        names.append(card->entry.metadata().displayName);
        EXPECT_EQ(view.all<OrvaIconTile>().size(), 1);
        EXPECT_EQ(texts(view),
                  (QStringList{card->entry.metadata().displayName, card->entry.metadata().summary}));
        ASSERT_EQ(view.all<OrvaSwitch>().size(), 1);
        EXPECT_FALSE(view.all<OrvaSwitch>().first()->isOn.get());
    }
    EXPECT_EQ(names, (QStringList{QStringLiteral("lamp"), QStringLiteral("fan"), QStringLiteral("kettle")}));
}

TEST_F(OnboardingTest, AFeatureTurnedOnInThePickerIsActiveAndStored)
{
    const AnyView flow = makeFlow();
    press(flow, "Continue");
    press(flow, "Continue");
    const auto toggle = flow.all<OrvaSwitch>().at(1);
    toggle->isOn.set(true);
    fake.runLoop.drain();
    EXPECT_TRUE(registry->isActive(capabilities.at(1)->classMetadata().id));
    EXPECT_TRUE(toggle->isOn.get());
    EXPECT_TRUE(store->isEnabled(capabilities.at(1)->classMetadata().id));
}

TEST_F(OnboardingTest, AFeatureWithoutItsPermissionIsWantedAndShowsAsOff)
{
    capabilities.front()->requirements = {{.permission = SystemPermission::accessibility}};
    const AnyView flow = makeFlow();
    press(flow, "Continue");
    press(flow, "Continue");
    const auto toggle = flow.all<OrvaSwitch>().first();
    toggle->isOn.set(true);
    fake.runLoop.drain();
    const CapabilityID id = capabilities.front()->classMetadata().id;
    EXPECT_EQ(registry->state(id), CapabilityState::Kind::needsPermission);
    EXPECT_TRUE(store->isEnabled(id));
    EXPECT_FALSE(toggle->isOn.get());
    const AnyView card = *flow.all<CapabilityCard>().first();
    EXPECT_EQ(texts(card).last(), QStringLiteral("Needs permission"));
    fake.permissions.denials[Permissions::Right::accessibility].reason =
        QStringLiteral("Nobody manages windows.");
    EXPECT_EQ(texts(card).last(), QStringLiteral("Nobody manages windows."));
}

TEST_F(OnboardingTest, WhoLeavesInTheMiddleBeginsAgainWithWhatWasTurnedOn)
{
    const CapabilityID id = capabilities.front()->classMetadata().id;
    {
        const AnyView flow = makeFlow();
        press(flow, "Continue");
        press(flow, "Continue");
        flow.all<OrvaSwitch>().first()->isOn.set(true);
        fake.runLoop.drain();
    }
    EXPECT_FALSE(flag->hasOnboarded.get());
    EXPECT_EQ(step(makeFlow()), Step::welcome);
    EXPECT_TRUE(CapabilityStore(fake.defaults).isEnabled(id));
}

} // namespace orvane::tests
