// The settings pane of the clipboard history: its sections in order, the settings that they are bound to, and
// the one button.
#include "Capabilities/ClipboardHistory/ClipboardHistorySettingsPane.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneKit/Controls/OrvaButtonView.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "OrvaneKit/Theme/SystemSymbol.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QSpinBox>

#include <gtest/gtest.h>

namespace {

using namespace orvane;
using namespace orvane::tests;

class ClipboardHistorySettingsPaneTest : public testing::Test {
protected:
    FakePlatform fake;
    std::shared_ptr<ClipboardHistorySettings> settings = std::make_shared<ClipboardHistorySettings>(
        ScopedPreferences(platform().standardDefaults, QStringLiteral("history.")));
    int clears = 0;
    AnyView pane = ClipboardHistorySettingsPane::make(settings, [this] { ++clears; });

    OrvaToggleRow toggle(const char16_t* title)
    {
        for (const auto& row : pane.all<OrvaToggleRow>()) {
            if (row->title.get() == QString::fromUtf16(title))
                return *row;
        }
        throw std::runtime_error("no such toggle");
    }
};

TEST_F(ClipboardHistorySettingsPaneTest, TheSectionsStandInTheirOrder)
{
    QStringList titles;
    QStringList symbols;
    for (const auto& section : pane.all<OrvaSection>()) {
        titles.append(section->title.value_or(QString()));
        symbols.append(section->systemImage.value_or(QString()));
    }
    EXPECT_EQ(titles, (QStringList{QStringLiteral("History"), QStringLiteral("What to Capture"),
                                   QStringLiteral("Pasting"), QStringLiteral("Storage")}));
    EXPECT_EQ(symbols, (QStringList{QStringLiteral("clock.arrow.circlepath"), QStringLiteral("tray.full"),
                                    QStringLiteral("doc.on.clipboard"), QStringLiteral("externaldrive")}));
    for (const QString& symbol : symbols)
        EXPECT_TRUE(SystemSymbol::exists(symbol)) << qPrintable(symbol);
}

TEST_F(ClipboardHistorySettingsPaneTest, TheTogglesStandInTheirOrder)
{
    QStringList titles;
    for (const auto& row : pane.all<OrvaToggleRow>())
        titles.append(row->title.get());
    EXPECT_EQ(titles,
              (QStringList{QStringLiteral("Keep history after quitting"), QStringLiteral("Capture text"),
                           QStringLiteral("Capture images"), QStringLiteral("Capture copied files"),
                           QStringLiteral("Skip items marked private by password managers"),
                           QStringLiteral("Automatically paste the chosen item")}));
}

TEST_F(ClipboardHistorySettingsPaneTest, EachToggleIsBoundToItsOwnSetting)
{
    struct Row {
        const char16_t* title;
        Setting<bool> ClipboardHistorySettings::*setting;
    };
    for (const Row& row :
         {Row{u"Keep history after quitting", &ClipboardHistorySettings::persist},
          Row{u"Capture text", &ClipboardHistorySettings::captureText},
          Row{u"Capture images", &ClipboardHistorySettings::captureImages},
          Row{u"Capture copied files", &ClipboardHistorySettings::captureFiles},
          Row{u"Skip items marked private by password managers", &ClipboardHistorySettings::ignoreConcealed},
          Row{u"Automatically paste the chosen item", &ClipboardHistorySettings::autoPaste}}) {
        auto& setting = (*settings).*(row.setting);
        const bool before = setting.get();
        EXPECT_EQ(toggle(row.title).isOn.get(), before);
        toggle(row.title).isOn.set(!before);
        EXPECT_EQ(setting.get(), !before) << qPrintable(QString::fromUtf16(row.title));
    }
}

TEST_F(ClipboardHistorySettingsPaneTest, OnlyAutoPasteHasACaption)
{
    for (const auto& row : pane.all<OrvaToggleRow>()) {
        if (row->title.get() != QStringLiteral("Automatically paste the chosen item")) {
            EXPECT_FALSE(row->caption);
            continue;
        }
        ASSERT_TRUE(row->caption);
        EXPECT_EQ(row->caption->get(), QStringLiteral("Needs Accessibility permission. When off, the item is "
                                                      "copied and you press ⌘V yourself."));
    }
}

TEST_F(ClipboardHistorySettingsPaneTest, TheStepperTellsTheNumberInItsLabel)
{
    const auto stepper = pane.all<OrvaStepperRow>().first();
    EXPECT_EQ(stepper->title.get(), QStringLiteral("Keep up to 200 items"));
    EXPECT_EQ(stepper->range.lower, 20);
    EXPECT_EQ(stepper->range.upper, 1000);
    EXPECT_EQ(stepper->step, 20);
    stepper->value.set(220);
    EXPECT_EQ(settings->maxItems.get(), 220);
    EXPECT_EQ(stepper->title.get(), QStringLiteral("Keep up to 220 items"));
}

TEST_F(ClipboardHistorySettingsPaneTest, ANumberOutsideOfTheRangeIsShownAsItIsStored)
{
    settings->maxItems.set(5000);
    EXPECT_EQ(pane.all<OrvaStepperRow>().first()->title.get(), QStringLiteral("Keep up to 5000 items"));
    const auto widget = rendered(pane);
    EXPECT_EQ(settings->maxItems.get(), 5000);
}

TEST_F(ClipboardHistorySettingsPaneTest, TheStepperGoesByTwentyAndItsNameFollows)
{
    const auto widget = rendered(pane);
    auto* box = widget->findChild<QSpinBox*>();
    ASSERT_TRUE(box);
    EXPECT_EQ(box->accessibleName(), QStringLiteral("Keep up to 200 items"));
    box->stepUp();
    EXPECT_EQ(settings->maxItems.get(), 220);
    EXPECT_EQ(box->accessibleName(), QStringLiteral("Keep up to 220 items"));
    EXPECT_TRUE(shownTexts(*widget).contains(QStringLiteral("Keep up to 220 items")));
}

TEST_F(ClipboardHistorySettingsPaneTest, ClearHistoryIsDestructiveAndActsAtOnce)
{
    const auto buttons = pane.all<OrvaButton>();
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_EQ(buttons.first()->title.get(), QStringLiteral("Clear History"));
    EXPECT_EQ(buttons.first()->role, OrvaButton::Role::destructive);
    EXPECT_EQ(pane.all<OrvaRowLabel>().first()->title.get(), QStringLiteral("Clear all unpinned history"));

    const auto widget = rendered(pane);
    click(*all<OrvaButtonView>(*widget).first());
    EXPECT_EQ(clears, 1);
}

TEST_F(ClipboardHistorySettingsPaneTest, ADestructiveButtonIsWrittenInRed)
{
    const auto widget = rendered(pane);
    OrvaButtonView& button = *all<OrvaButtonView>(*widget).first();
    button.resize(button.sizeHint());
    const QImage image = button.grab().toImage().convertToFormat(QImage::Format_RGB32);
    int reds = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            reds += color.red() > color.green() + 60 && color.red() > color.blue() + 60 ? 1 : 0;
        }
    }
    EXPECT_GT(reds, 20);
}

TEST_F(ClipboardHistorySettingsPaneTest, TheCaptionUnderTheSectionsTellsOfTheShortcut)
{
    const auto texts = pane.all<OrvaCaptionText>();
    ASSERT_EQ(texts.size(), 1);
    EXPECT_EQ(texts.first()->text.get(),
              QStringLiteral("Assign a shortcut to open the clipboard history popup "
                             "in the Keyboard Shortcuts section above."));
}

} // namespace
