#include "PlatformLinux/DesktopPicture/LinuxDesktopPicture.h"

#include "Platform/PlatformError.h"
#include "PlatformLinux/DesktopPicture/BlockingBus.h"
#include "PlatformLinux/DesktopPicture/DesktopPictureText.h"
#include "PlatformLinux/DesktopPicture/GSettingsPicture.h"
#include "PlatformLinux/DesktopPicture/RootPicture.h"
#include "PlatformLinux/DesktopPicture/ShortProgram.h"
#include "PlatformLinux/DesktopPicture/XfcePicture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUrl>

namespace orvane {

namespace {

const QString plasma = QStringLiteral("org.kde.plasmashell");

void setOnPlasma(const BlockingBus& bus, const QString& path)
{
    bus.call(plasma, QStringLiteral("/PlasmaShell"), QStringLiteral("org.kde.PlasmaShell"),
             QStringLiteral("evaluateScript"), {plasmaScript(path)});
}

void setOnLxqt(const QString& path)
{
    if (!runShortly(QStringLiteral("pcmanfm-qt"), {QStringLiteral("--set-wallpaper"), path}))
        throw PlatformError(PlatformError::Kind::failed,
                            DesktopPictureText::tr("The desktop didn’t take the picture."));
}

} // namespace

QString plasmaScript(const QString& path)
{
    // Written as JSON, the URL is a text of the script's language whatever the path has in it.
    const QByteArray url = QJsonDocument(QJsonArray{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)})
                               .toJson(QJsonDocument::Compact);
    return QStringLiteral("for (const desktop of desktops()) {"
                          " desktop.wallpaperPlugin = 'org.kde.image';"
                          " desktop.currentConfigGroup = ['Wallpaper', 'org.kde.image', 'General'];"
                          " desktop.writeConfig('Image', %1[0]); }")
        .arg(QString::fromUtf8(url));
}

void LinuxDesktopPicture::set(const QString& path, const QList<Screen>& screens)
{
    if (screens.isEmpty())
        return;
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    const BlockingBus bus;
    if (XfcePicture::isThere(bus))
        XfcePicture::set(bus, path, screens);
    else if (bus.hasOwner(plasma))
        setOnPlasma(bus, path);
    else if (const auto keys = GSettingsPicture::keysFor(desktops))
        GSettingsPicture::set(*keys, path, GSettingsPicture::systemTool());
    else if (desktops.contains(QLatin1String("LXQt")))
        setOnLxqt(path);
    else
        RootPicture::set(m_pictures, path, screens);
}

} // namespace orvane
