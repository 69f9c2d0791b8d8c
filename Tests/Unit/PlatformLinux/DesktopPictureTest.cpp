// What the desktops are told, without any of them.
#include "Platform/PlatformError.h"
#include "PlatformLinux/DesktopPicture/GSettingsPicture.h"
#include "PlatformLinux/DesktopPicture/LinuxDesktopPicture.h"
#include "PlatformLinux/DesktopPicture/XfcePicture.h"

#include <QMap>

#include <gtest/gtest.h>

using namespace orvane;

namespace {

/// The tool with settings in memory: a schema's keys and values.
class Settings {
public:
    explicit Settings(QMap<QString, QString> keys) : values(std::move(keys)) {}

    GSettingsPicture::Tool tool()
    {
        return [this](const QStringList& arguments) -> std::optional<QString> {
            if (arguments.value(1) != schema)
                return std::nullopt;
            if (arguments.first() == QLatin1String("list-keys"))
                return values.keys().join(u'\n');
            const QString key = arguments.value(2);
            if (!values.contains(key) || key == refused)
                return std::nullopt;
            if (arguments.first() == QLatin1String("set"))
                values.insert(key, arguments.value(3));
            return values.value(key) + u'\n';
        };
    }

    QString schema;
    QString refused;
    QMap<QString, QString> values;
};

GSettingsPicture::Keys keysOf(const char* desktop)
{
    const auto keys = GSettingsPicture::keysFor({QStringLiteral("ubuntu-ish"), QString::fromLatin1(desktop)});
    return keys.value_or(GSettingsPicture::Keys{});
}

} // namespace

TEST(XfcePictureTest, TakesThePresentWorkspacesAndThoseOfTheSettings)
{
    const QVariantMap properties{
        {QStringLiteral("/backdrop/screen0/monitorDP-1/workspace0/last-image"), QStringLiteral("/a.png")},
        {QStringLiteral("/backdrop/screen0/monitorDP-1/workspace5/image-style"), 3},
        {QStringLiteral("/backdrop/screen0/monitorDP-1/workspace5/last-image"), QStringLiteral("/a.png")},
        {QStringLiteral("/backdrop/screen0/monitorDP-10/workspace7/last-image"), QStringLiteral("/a.png")},
        {QStringLiteral("/backdrop/screen0/monitorDP-1/image-path"), QStringLiteral("/a.png")},
        {QStringLiteral("/backdrop/single-workspace-mode"), true}};
    EXPECT_EQ(XfcePicture::workspaceFolders(properties, QStringLiteral("DP-1"), 2),
              QStringList({QStringLiteral("/backdrop/screen0/monitorDP-1/workspace0"),
                           QStringLiteral("/backdrop/screen0/monitorDP-1/workspace1"),
                           QStringLiteral("/backdrop/screen0/monitorDP-1/workspace5")}));
}

TEST(XfcePictureTest, AStyleThatShowsThePictureStays)
{
    const QString folder = QStringLiteral("/w");
    EXPECT_TRUE(XfcePicture::lacksStyle({}, folder));
    EXPECT_TRUE(XfcePicture::lacksStyle({{QStringLiteral("/w/image-style"), 0}}, folder));
    for (int style = 1; style <= 5; ++style)
        EXPECT_FALSE(XfcePicture::lacksStyle({{QStringLiteral("/w/image-style"), style}}, folder)) << style;
}

TEST(GSettingsPictureTest, KnowsTheDesktopsThatUseIt)
{
    EXPECT_EQ(keysOf("GNOME").schema, QStringLiteral("org.gnome.desktop.background"));
    EXPECT_EQ(keysOf("Budgie").schema, QStringLiteral("org.gnome.desktop.background"));
    EXPECT_EQ(keysOf("X-Cinnamon").schema, QStringLiteral("org.cinnamon.desktop.background"));
    EXPECT_EQ(keysOf("MATE").schema, QStringLiteral("org.mate.background"));
    EXPECT_FALSE(GSettingsPicture::keysFor({QStringLiteral("XFCE"), QStringLiteral("LXQt")}));
    EXPECT_FALSE(GSettingsPicture::keysFor({}));
}

TEST(GSettingsPictureTest, SetsTheDarkPictureTooAndLeavesTheStyle)
{
    Settings settings({{QStringLiteral("picture-uri"), {}},
                       {QStringLiteral("picture-uri-dark"), {}},
                       {QStringLiteral("picture-options"), QStringLiteral("'spanned'")}});
    settings.schema = keysOf("GNOME").schema;
    GSettingsPicture::set(keysOf("GNOME"), QStringLiteral("/home/o'neil/a b.jpg"), settings.tool());
    EXPECT_EQ(settings.values.value(QStringLiteral("picture-uri")),
              QStringLiteral("'file:///home/o\\'neil/a%20b.jpg'"));
    EXPECT_EQ(settings.values.value(QStringLiteral("picture-uri-dark")),
              settings.values.value(QStringLiteral("picture-uri")));
    EXPECT_EQ(settings.values.value(QStringLiteral("picture-options")), QStringLiteral("'spanned'"));
}

TEST(GSettingsPictureTest, AnOlderDesktopHasNoDarkPicture)
{
    Settings settings(
        {{QStringLiteral("picture-uri"), {}}, {QStringLiteral("picture-options"), QStringLiteral("'none'")}});
    settings.schema = keysOf("GNOME").schema;
    GSettingsPicture::set(keysOf("GNOME"), QStringLiteral("/a.jpg"), settings.tool());
    EXPECT_EQ(settings.values.value(QStringLiteral("picture-uri")), QStringLiteral("'file:///a.jpg'"));
    EXPECT_EQ(settings.values.value(QStringLiteral("picture-options")), QStringLiteral("'zoom'"))
        << "with no style, no picture would be seen";
}

TEST(GSettingsPictureTest, MateHasAPath)
{
    Settings settings({{QStringLiteral("picture-filename"), {}},
                       {QStringLiteral("picture-options"), QStringLiteral("'zoom'")}});
    settings.schema = keysOf("MATE").schema;
    GSettingsPicture::set(keysOf("MATE"), QStringLiteral("/a b\\c.jpg"), settings.tool());
    EXPECT_EQ(settings.values.value(QStringLiteral("picture-filename")), QStringLiteral("'/a b\\\\c.jpg'"));
}

TEST(GSettingsPictureTest, ARefusalIsSaid)
{
    Settings settings({{QStringLiteral("picture-filename"), {}}});
    settings.schema = keysOf("MATE").schema;
    settings.refused = QStringLiteral("picture-filename");
    EXPECT_THROW(GSettingsPicture::set(keysOf("MATE"), QStringLiteral("/a"), settings.tool()), PlatformError);
    settings.schema = QStringLiteral("none");
    EXPECT_THROW(GSettingsPicture::set(keysOf("MATE"), QStringLiteral("/a"), settings.tool()), PlatformError);
}

TEST(PlasmaPictureTest, APathIsNeverPartOfTheScript)
{
    const QString script = plasmaScript(QStringLiteral("/a'\"]; evil() %1 \\.jpg"));
    EXPECT_TRUE(script.contains(QStringLiteral("[\"file:///a'%22];%20evil()%20%251%20%5C.jpg\"][0]")))
        << script.toStdString();
}
