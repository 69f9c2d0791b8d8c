// A permission's row in all its states, and the row that starts the program anew.
#include "Fakes/FakePlatform.h"
#include "Orvane/Home/OrvaRowSymbol.h"
#include "Orvane/Launch/AppRelaunch.h"
#include "Orvane/Permissions/OrvaPermissionRow.h"
#include "Orvane/Permissions/PermissionRestartRow.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneKit/Controls/OrvaPillView.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QPushButton>

#include <gmock/gmock.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

class OrvaPermissionRowTest : public testing::Test {
protected:
    [[nodiscard]] AnyView row(SystemPermission permission,
                              std::optional<PermissionRequirement::Level> level = std::nullopt) const
    {
        return OrvaPermissionRow{.permission = permission,
                                 .level = level,
                                 .note = QStringLiteral("Why it is needed."),
                                 .permissions = permissions};
    }

    void grant()
    {
        fake.permissions.accessibility = true;
        permissions->refresh();
    }

    /// Returns the titles of the badges and buttons that are shown.
    static QStringList trailing(const AnyView& view)
    {
        QStringList list;
        for (const auto& conditional : view.all<OrvaIf>()) {
            if (!conditional->condition.get())
                continue;
            for (const auto& badge : conditional->content.all<OrvaBadge>())
                list.append(badge->text);
            for (const auto& button : conditional->content.all<OrvaButton>())
                list.append(button->title.get());
        }
        return list;
    }

    FakePlatform fake;
    std::shared_ptr<PermissionManager> permissions = PermissionManager::make();
};

} // namespace

TEST_F(OrvaPermissionRowTest, ShowsNameAndNoteOfItsPermission)
{
    for (const SystemPermission permission : allSystemPermissions) {
        const auto texts = row(permission).all<OrvaText>();
        ASSERT_EQ(texts.size(), 2);
        EXPECT_EQ(texts.at(0)->text.get(), displayName(permission));
        EXPECT_EQ(texts.at(1)->text.get(), QStringLiteral("Why it is needed."));
        EXPECT_EQ(texts.at(1)->font, OrvaFont::caption);
    }
}

TEST_F(OrvaPermissionRowTest, OffersBothWaysWhileItIsMissing)
{
    const AnyView view = row(SystemPermission::accessibility);
    EXPECT_EQ(trailing(view), (QStringList{QStringLiteral("Grant"), QStringLiteral("Open System Settings")}));
    const auto symbol = view.all<OrvaRowSymbol>().first();
    EXPECT_EQ(symbol->systemImage.get(), QStringLiteral("circle"));
    EXPECT_EQ(symbol->meaning.get(), QStringLiteral("Not granted"));
    EXPECT_EQ(view.all<OrvaButton>().at(1)->systemImage, QStringLiteral("arrow.up.forward.app"));
}

TEST_F(OrvaPermissionRowTest, GivesTheMarkInPlaceOfTheButtonsOnceItIsGranted)
{
    const AnyView view = row(SystemPermission::accessibility);
    grant();
    EXPECT_EQ(trailing(view), QStringList{QStringLiteral("Granted")});
    EXPECT_EQ(view.all<OrvaBadge>().first()->systemImage, QStringLiteral("checkmark"));
    const auto symbol = view.all<OrvaRowSymbol>().first();
    EXPECT_EQ(symbol->systemImage.get(), QStringLiteral("checkmark.circle.fill"));
    EXPECT_EQ(symbol->color.get(), OrvaColor::green);
}

TEST_F(OrvaPermissionRowTest, ARevokedPermissionOffersTheButtonsAgain)
{
    const AnyView view = row(SystemPermission::accessibility);
    grant();
    fake.permissions.accessibility = false;
    permissions->refresh();
    EXPECT_EQ(trailing(view).size(), 2);
}

TEST_F(OrvaPermissionRowTest, APermissionThatWasNeverAskedForCountsAsMissing)
{
    EXPECT_EQ(permissions->status(SystemPermission::appleEvents), PermissionStatus::notDetermined);
    EXPECT_EQ(trailing(row(SystemPermission::appleEvents)).size(), 2);
}

TEST_F(OrvaPermissionRowTest, HasABadgeOfItsLevelOnlyWhenItHasOne)
{
    const auto badges = [&](std::optional<PermissionRequirement::Level> level) {
        QStringList list;
        for (const auto& badge : row(SystemPermission::accessibility, level).all<OrvaBadge>())
            list.append(badge->text);
        return list;
    };
    EXPECT_EQ(badges(std::nullopt), QStringList{QStringLiteral("Granted")});
    EXPECT_TRUE(badges(PermissionRequirement::Level::required).contains(QStringLiteral("Required")));
    EXPECT_TRUE(badges(PermissionRequirement::Level::optional).contains(QStringLiteral("Optional")));
}

TEST_F(OrvaPermissionRowTest, TheButtonsAskForItAndShowItsSettings)
{
    const AnyView view = row(SystemPermission::accessibility);
    fake.permissions.userAnswer = [this] { fake.permissions.accessibility = true; };
    view.all<OrvaButton>().at(0)->action();
    EXPECT_EQ(fake.permissions.requests, QStringList{QStringLiteral("accessibility")});
    EXPECT_EQ(trailing(view), QStringList{QStringLiteral("Granted")});
    view.all<OrvaButton>().at(1)->action();
    EXPECT_EQ(fake.workspace.openedURLs, QStringList{settingsURLString(SystemPermission::accessibility)});
}

TEST_F(OrvaPermissionRowTest, KeepsItsHeightWhenThePermissionComes)
{
    const auto widget = rendered(row(SystemPermission::accessibility));
    widget->resize(640, 10);
    widget->show();
    const auto height = [&] { return qMax(widget->sizeHint().height(), widget->minimumHeight()); };
    const int before = height();
    grant();
    QCoreApplication::processEvents();
    EXPECT_EQ(height(), before);
    EXPECT_TRUE(shownTexts(*widget).contains(QStringLiteral("Granted")));
}

TEST_F(OrvaPermissionRowTest, TheMarkEndsWhereTheButtonsOutlineDid)
{
    const auto widget = rendered(row(SystemPermission::accessibility));
    widget->resize(640, 60);
    widget->show();
    const auto end = [&](const QWidget& part) {
        return part.mapTo(widget.get(), QPoint(part.width(), 0)).x();
    };
    constexpr int inset = static_cast<int>(Orva::rowH);
    const QPushButton* settings = all<QPushButton>(*widget).last();
    ASSERT_TRUE(settings->isVisible());
    EXPECT_EQ(end(*settings) - orvaRingMargin, 640 - inset);
    grant();
    QCoreApplication::processEvents();
    const OrvaBadgeView* mark = all<OrvaBadgeView>(*widget).first();
    ASSERT_TRUE(mark->isVisible());
    EXPECT_EQ(end(*mark), 640 - inset);
}

TEST_F(OrvaPermissionRowTest, ItsButtonsSayWhatTheyAreAbout)
{
    const auto widget = rendered(row(SystemPermission::screenRecording));
    const auto buttons = all<QPushButton>(*widget);
    ASSERT_EQ(buttons.size(), 2);
    for (const QPushButton* button : buttons)
        EXPECT_EQ(button->accessibleDescription(), QStringLiteral("Screen Recording"));
}

TEST_F(OrvaPermissionRowTest, AReasonTakesThePlaceOfTheNoteAndOfWhatCannotHelp)
{
    auto& denial = fake.permissions.denials[Permissions::Right::accessibility];
    denial = {.reason = QStringLiteral("Nobody manages the windows."), .canBeRequested = false};
    const AnyView view = row(SystemPermission::accessibility);
    EXPECT_EQ(view.all<OrvaText>().at(1)->text.get(), QStringLiteral("Nobody manages the windows."));
    EXPECT_EQ(trailing(view), QStringList());
    denial.canBeRequested = true;
    EXPECT_EQ(trailing(view), QStringList{QStringLiteral("Grant")});
    grant();
    EXPECT_EQ(view.all<OrvaText>().at(1)->text.get(), QStringLiteral("Why it is needed."));
    EXPECT_EQ(trailing(view), QStringList{QStringLiteral("Granted")});
}

TEST(PermissionRestartRowTest, IsShownOnlyWhileANewStartMayHelp)
{
    FakePlatform fake;
    const auto permissions = PermissionManager::make();
    const AnyView row = PermissionRestartRow{{SystemPermission::accessibility}, permissions};
    const auto shown = [&] { return row.all<OrvaIf>().first()->condition.get(); };
    EXPECT_TRUE(shown());
    fake.permissions.denials[Permissions::Right::accessibility].needsRestart = false;
    EXPECT_FALSE(shown());
    fake.permissions.denials.clear();
    fake.permissions.accessibility = true;
    permissions->refresh();
    EXPECT_FALSE(shown());
}

TEST(PermissionRestartRowTest, WithoutAManagerItIsAlwaysShown)
{
    const FakePlatform fake;
    const AnyView row = PermissionRestartRow{};
    EXPECT_TRUE(row.all<OrvaIf>().isEmpty());
    EXPECT_EQ(row.all<OrvaButton>().size(), 1);
}

TEST(PermissionRestartRowTest, SaysWhyAndStartsTheProgramAnew)
{
    FakePlatform fake;
    const AnyView row = PermissionRestartRow{{SystemPermission::accessibility}, PermissionManager::make()};
    EXPECT_EQ(row.all<OrvaRowSymbol>().first()->systemImage.get(), QStringLiteral("arrow.clockwise.circle"));
    EXPECT_EQ(row.all<OrvaText>().first()->text.get(),
              QStringLiteral("Granted it but still shows off? macOS applies new permissions only after "
                             "Orvane restarts."));
    const auto button = row.all<OrvaButton>().first();
    EXPECT_EQ(button->title.get(), QStringLiteral("Quit & Reopen"));
    button->action();
    ASSERT_EQ(fake.workspace.opened.size(), 1u);
    EXPECT_TRUE(fake.workspace.opened.front().configuration.createsNewApplicationInstance);
}

TEST(AppRelaunchTest, AFailedStartIsLoggedWithItsReason)
{
    FakePlatform fake;
    AppRelaunch::relaunch();
    fake.workspace.opened.at(0).completion(QStringLiteral("The file is gone."));
    ASSERT_EQ(fake.log.entries().size(), 1u);
    EXPECT_TRUE(fake.log.messages().first().contains(QStringLiteral("The file is gone.")));
    fake.runLoop.drain();
    EXPECT_EQ(fake.application.terminations, 1);
}
