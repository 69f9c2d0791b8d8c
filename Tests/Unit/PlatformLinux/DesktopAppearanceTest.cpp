// The light and dark of a desktop's own settings, and its accent colour.
#include "PlatformLinux/Appearance/DesktopAppearance.h"
#include "PlatformLinux/Appearance/AccentColor.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

#include <sys/stat.h>

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

TEST(AccentColor, ThePortalsNumbersAreSharesAndOthersMeanNone)
{
    EXPECT_EQ(accentOfPortal(1, 0, 0), QColor(255, 0, 0));
    EXPECT_EQ(accentOfPortal(0.2, 0.4, 0.6), QColor::fromRgbF(0.2F, 0.4F, 0.6F));
    EXPECT_EQ(accentOfPortal(-1, -1, -1), std::nullopt);
    EXPECT_EQ(accentOfPortal(0, 0, 1.01), std::nullopt);
    EXPECT_EQ(accentOfPortal(0, std::numeric_limits<double>::quiet_NaN(), 0), std::nullopt);
}

TEST(AccentColor, KdeWritesNumbersOrHexadecimals)
{
    EXPECT_EQ(accentOfKde(QStringLiteral("61,174,233")), QColor(61, 174, 233));
    EXPECT_EQ(accentOfKde(QStringLiteral(" #3daee9")), QColor(61, 174, 233));
    EXPECT_EQ(accentOfKde(QString()), std::nullopt);
    EXPECT_EQ(accentOfKde(QStringLiteral("300,0,0")), std::nullopt);
    EXPECT_EQ(accentOfKde(QStringLiteral("red")), std::nullopt);
    EXPECT_EQ(accentOfKde(3), std::nullopt);
}

TEST(AccentColor, AStyleSheetNamesTheColourOfWhatIsSelected)
{
    EXPECT_EQ(selectedColorIn(QStringLiteral("@define-color theme_selected_bg_color #398ee7;")),
              QColor(0x39, 0x8e, 0xe7));
    EXPECT_EQ(selectedColorIn(QStringLiteral("@define-color theme_selected_bg_color rgb(1, 2, 3);")),
              QColor(1, 2, 3));
    EXPECT_EQ(selectedColorIn(QStringLiteral("@define-color blue #00f;\n"
                                             "@define-color chosen @blue;\n"
                                             "@define-color theme_selected_bg_color @chosen;")),
              QColor(0, 0, 255));
    EXPECT_EQ(selectedColorIn(QStringLiteral("@define-color theme_selected_bg_color @itself;"
                                             "@define-color itself @itself;")),
              std::nullopt);
    EXPECT_EQ(selectedColorIn(QStringLiteral("@define-color theme_selected_bg_color shade(#fff, 0.9);")),
              std::nullopt);
    EXPECT_EQ(selectedColorIn(QString()), std::nullopt);
}

class ThemeFiles : public testing::Test {
protected:
    void write(const QString& name, const char* text) const
    {
        QDir().mkpath(folder());
        QFile file(folder() + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    [[nodiscard]] QString folder() const { return m_home.path() + QStringLiteral("/Sky/gtk-3.0/"); }
    [[nodiscard]] std::optional<QColor> read(const QString& theme = QStringLiteral("Sky")) const
    {
        return readSelectedColor(theme, {QStringLiteral("/nowhere"), m_home.path()});
    }

private:
    QTemporaryDir m_home;
};

TEST_F(ThemeFiles, AThemeAndWhatItImportsAreRead)
{
    EXPECT_EQ(read(), std::nullopt);
    write(QStringLiteral("gtk.css"), "@import url(\"main.css\");");
    EXPECT_EQ(read(), std::nullopt);
    write(QStringLiteral("main.css"), "@define-color theme_selected_bg_color #102030;");
    EXPECT_EQ(read(), QColor(0x10, 0x20, 0x30));
    write(QStringLiteral("gtk.css"),
          "@import url('main.css');@define-color theme_selected_bg_color #405060;");
    EXPECT_EQ(read(), QColor(0x40, 0x50, 0x60)) << "the importing sheet counts more";
}

TEST_F(ThemeFiles, SheetsThatImportEachOtherEnd)
{
    write(QStringLiteral("gtk.css"), "@import url(other.css);");
    write(QStringLiteral("other.css"), "@import url(gtk.css);");
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(ThemeFiles, ANameIsNoPath)
{
    write(QStringLiteral("gtk.css"), "@define-color theme_selected_bg_color #102030;");
    EXPECT_EQ(read(QStringLiteral("Sky/../Sky")), std::nullopt);
    EXPECT_EQ(read(QStringLiteral("..")), std::nullopt);
    EXPECT_EQ(read(QString()), std::nullopt);
}

TEST_F(ThemeFiles, WhatIsNoFileIsNotOpened)
{
    ASSERT_TRUE(QDir().mkpath(folder()));
    ASSERT_EQ(::mkfifo(qPrintable(folder() + QStringLiteral("gtk.css")), 0600), 0);
    EXPECT_EQ(read(), std::nullopt);
}

} // namespace
