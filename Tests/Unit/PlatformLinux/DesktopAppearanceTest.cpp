// The light and dark of a desktop's own settings.
#include "PlatformLinux/Appearance/DesktopAppearance.h"

#include <gtest/gtest.h>

namespace {

using namespace orvane;

TEST(DesktopAppearance, ThePortalSaysDarkLightOrNothing)
{
    EXPECT_EQ(schemeOfPortal(1u), ColorScheme::dark);
    EXPECT_EQ(schemeOfPortal(2u), ColorScheme::light);
    EXPECT_EQ(schemeOfPortal(0u), std::nullopt);
    EXPECT_EQ(schemeOfPortal(7u), std::nullopt);
    EXPECT_EQ(schemeOfPortal({}), std::nullopt);
    EXPECT_EQ(schemeOfPortal(QStringLiteral("dark")), std::nullopt);
}

TEST(DesktopAppearance, ThePortalMayWrapItsValueOnceMore)
{
    const QVariant inner = QVariant::fromValue(QDBusVariant(1u));
    EXPECT_EQ(schemeOfPortal(inner), ColorScheme::dark);
    EXPECT_EQ(schemeOfPortal(QVariant::fromValue(QDBusVariant(inner))), ColorScheme::dark);
}

TEST(DesktopAppearance, ADarkThemeSaysSoInItsName)
{
    EXPECT_EQ(schemeOfTheme(QStringLiteral("Greybird-dark")), ColorScheme::dark);
    EXPECT_EQ(schemeOfTheme(QStringLiteral("Arc-Darker")), ColorScheme::dark);
    EXPECT_EQ(schemeOfTheme(QStringLiteral("Adwaita")), ColorScheme::light);
    EXPECT_EQ(schemeOfTheme(QString()), std::nullopt);
    EXPECT_EQ(schemeOfTheme(3), std::nullopt);
    EXPECT_EQ(schemeOfTheme({}), std::nullopt);
}

} // namespace
