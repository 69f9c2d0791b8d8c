#include "PlatformLinux/DesktopPicture/GSettingsPicture.h"

#include "Platform/PlatformError.h"
#include "PlatformLinux/DesktopPicture/DesktopPictureText.h"
#include "PlatformLinux/DesktopPicture/ShortProgram.h"

#include <QUrl>

#include <algorithm>

namespace orvane {

namespace {

const GSettingsPicture::Keys gnome{.schema = QStringLiteral("org.gnome.desktop.background"),
                                   .picture = QStringLiteral("picture-uri"),
                                   .darkPicture = QStringLiteral("picture-uri-dark"),
                                   .options = QStringLiteral("picture-options")};
const GSettingsPicture::Keys cinnamon{.schema = QStringLiteral("org.cinnamon.desktop.background"),
                                      .picture = QStringLiteral("picture-uri"),
                                      .darkPicture = {},
                                      .options = QStringLiteral("picture-options")};
const GSettingsPicture::Keys mate{.schema = QStringLiteral("org.mate.background"),
                                  .picture = QStringLiteral("picture-filename"),
                                  .darkPicture = {},
                                  .options = QStringLiteral("picture-options"),
                                  .isPath = true};

/// Writes a text as GVariant reads it.
QString quoted(QString text)
{
    text.replace(u'\\', QLatin1String("\\\\")).replace(u'\'', QLatin1String("\\'"));
    return u'\'' + text + u'\'';
}

} // namespace

std::optional<GSettingsPicture::Keys> GSettingsPicture::keysFor(const QStringList& desktops)
{
    static const QStringList kinOfGnome{
        QStringLiteral("GNOME"),  QStringLiteral("GNOME-Classic"), QStringLiteral("GNOME-Flashback"),
        QStringLiteral("Unity"),  QStringLiteral("Budgie"),        QStringLiteral("Pantheon"),
        QStringLiteral("ubuntu"),
    };
    for (const QString& desktop : desktops) {
        if (desktop == QLatin1String("X-Cinnamon") || desktop == QLatin1String("Cinnamon"))
            return cinnamon;
        if (desktop == QLatin1String("MATE"))
            return mate;
        if (kinOfGnome.contains(desktop))
            return gnome;
    }
    return std::nullopt;
}

void GSettingsPicture::set(const Keys& keys, const QString& path, const Tool& tool)
{
    const auto setKey = [&](const QString& key, const QString& value) {
        if (!tool({QStringLiteral("set"), keys.schema, key, value}))
            throw PlatformError(PlatformError::Kind::failed,
                                DesktopPictureText::tr("The desktop’s settings didn’t take the picture."));
    };
    const QString value = quoted(keys.isPath ? path : QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded));
    const auto known = tool({QStringLiteral("list-keys"), keys.schema});
    if (!known)
        throw PlatformError(PlatformError::Kind::unsupported,
                            DesktopPictureText::tr("The desktop’s settings can’t be reached."));
    const auto options = tool({QStringLiteral("get"), keys.schema, keys.options});
    if (options && options->trimmed() == QLatin1String("'none'"))
        setKey(keys.options, quoted(QStringLiteral("zoom")));
    setKey(keys.picture, value);
    if (!keys.darkPicture.isEmpty() && known->split(u'\n').contains(keys.darkPicture))
        setKey(keys.darkPicture, value);
}

GSettingsPicture::Tool GSettingsPicture::systemTool()
{
    return [](const QStringList& arguments) { return runShortly(QStringLiteral("gsettings"), arguments); };
}

} // namespace orvane
