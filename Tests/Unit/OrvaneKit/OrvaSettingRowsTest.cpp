// Rows that are bound to a property in one line.
#include "OrvaneKit/Model/OrvaSettingRows.h"

#include <gtest/gtest.h>

namespace orvane::tests {

enum class Shade { linen, silk };

inline constexpr std::array shadeNames{EnumName{Shade::linen, "linen", u"Plain linen"},
                                       EnumName{Shade::silk, "silk", u"Silk"}};
constexpr const auto& enumNames(Shade)
{
    return shadeNames;
}

namespace {

struct LampSettings {
    Observable<bool> glows{false};
    Observable<int> bulbs{3};
    Observable<double> reach{12.9};
    Observable<Shade> shade{Shade::linen};
};

struct OrvaSettingRowsTest : testing::Test {
    std::shared_ptr<LampSettings> settings = std::make_shared<LampSettings>();
    const QList<OrvaPickerOption> shades{{QStringLiteral("Plain linen"), QStringLiteral("linen")},
                                         {QStringLiteral("Silk"), QStringLiteral("silk")}};
};

} // namespace

TEST_F(OrvaSettingRowsTest, ALiveValueIsTransformedAnewAtEachChange)
{
    const Live<QString> text =
        live(settings, &LampSettings::bulbs, [](int bulbs) { return QString::number(bulbs); });
    EXPECT_EQ(text.get(), QStringLiteral("3"));
    QStringList seen;
    const Cancellables subscriptions = text.onChange([&] { seen.append(text.get()); });
    settings->bulbs.set(4);
    EXPECT_EQ(seen, QStringList{QStringLiteral("4")});
}

TEST_F(OrvaSettingRowsTest, ALiveValueKeepsItsOwner)
{
    std::optional text =
        live(settings, &LampSettings::bulbs, [](int bulbs) { return QString::number(bulbs); });
    const std::weak_ptr<LampSettings> weak = settings;
    settings.reset();
    EXPECT_EQ(text->get(), QStringLiteral("3"));
    text.reset();
    EXPECT_TRUE(weak.expired());
}

TEST_F(OrvaSettingRowsTest, AToggleShowsAndSetsItsProperty)
{
    const OrvaToggleRow row =
        toggleRow(settings, &LampSettings::glows, QStringLiteral("Glow"), QStringLiteral("Needs oil."));
    EXPECT_EQ(row.title.get(), QStringLiteral("Glow"));
    ASSERT_TRUE(row.caption);
    EXPECT_EQ(row.caption->get(), QStringLiteral("Needs oil."));
    row.isOn.set(true);
    EXPECT_TRUE(settings->glows.get());
    EXPECT_FALSE(toggleRow(settings, &LampSettings::glows, QStringLiteral("Glow")).caption);
}

TEST_F(OrvaSettingRowsTest, APickerOffersTheTitlesAndSetsTheCase)
{
    const OrvaPickerRow row = pickerRow(settings, &LampSettings::shade, QStringLiteral("Shade"));
    EXPECT_EQ(row.title, QStringLiteral("Shade"));
    EXPECT_EQ(row.content.get(), shades);
    EXPECT_EQ(row.selection.get(), QStringLiteral("linen"));
    row.selection.set(QStringLiteral("silk"));
    EXPECT_EQ(settings->shade.get(), Shade::silk);
    row.selection.set(QStringLiteral("velvet"));
    EXPECT_EQ(settings->shade.get(), Shade::silk);
}

TEST_F(OrvaSettingRowsTest, ARadioGroupOffersTheSame)
{
    const OrvaRadioGroup group = radioGroup(settings, &LampSettings::shade, QStringLiteral("Shade"));
    EXPECT_EQ(group.label, QStringLiteral("Shade"));
    EXPECT_EQ(group.content.get(), shades);
    settings->shade.set(Shade::silk);
    EXPECT_EQ(group.selection.get(), QStringLiteral("silk"));
}

TEST_F(OrvaSettingRowsTest, ASliderShowsItsValueCutOffWithItsUnit)
{
    const OrvaSliderRow row =
        sliderRow(settings, &LampSettings::reach, QStringLiteral("Reach"), {2, 30}, QStringLiteral("pt"));
    EXPECT_EQ(row.title, QStringLiteral("Reach"));
    EXPECT_EQ(row.range.lower, 2);
    EXPECT_EQ(row.range.upper, 30);
    EXPECT_FALSE(row.step);
    EXPECT_EQ(row.detail.get(), QStringLiteral("12 pt"));
    row.value.set(-0.4);
    EXPECT_EQ(row.detail.get(), QStringLiteral("0 pt"));
}

} // namespace orvane::tests
