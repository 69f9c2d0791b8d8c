#include "OrvaneCore/Base/EnumNames.h"

#include <gtest/gtest.h>

namespace orvane::tests {

enum class Shade { linen, silk };

inline constexpr std::array shadeNames{EnumName{Shade::linen, "linen", u"Plain linen"},
                                       EnumName{Shade::silk, "silk", u"Silk — fine"}};
constexpr const auto& enumNames(Shade)
{
    return shadeNames;
}

enum class Muddled { first, second };

inline constexpr std::array muddledNames{EnumName{Muddled::second, "second"},
                                         EnumName{Muddled::first, "first"}};
constexpr const auto& enumNames(Muddled)
{
    return muddledNames;
}

static_assert(isInOrder<Shade>());
static_assert(!isInOrder<Muddled>());
static_assert(!NamedEnum<std::byte> && !NamedEnum<int>);

TEST(EnumNames, EachCaseHasItsNameAndItsTitle)
{
    EXPECT_EQ(rawValue(Shade::silk), QLatin1StringView("silk"));
    EXPECT_EQ(title(Shade::silk), QStringLiteral("Silk — fine"));
    EXPECT_EQ(title(Muddled::first), QString());
}

TEST(EnumNames, ANameGivesItsCaseAndAnUnknownOneNothing)
{
    EXPECT_EQ(fromRawValue<Shade>(u"linen"), Shade::linen);
    EXPECT_EQ(fromRawValue<Shade>(u"Linen"), std::nullopt);
    EXPECT_EQ(fromRawValue<Shade>(u"Plain linen"), std::nullopt);
    EXPECT_EQ(fromRawValue<Shade>(u""), std::nullopt);
}

TEST(EnumNames, TheCasesComeInTheirOrder)
{
    EXPECT_EQ(allCases<Shade>(), (std::array{Shade::linen, Shade::silk}));
}

} // namespace orvane::tests
