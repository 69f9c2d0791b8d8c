#include "PlatformLinux/DesktopPicture/XfcePicture.h"

#include "PlatformLinux/X11/XExchange.h"

#include <QDBusArgument>
#include <QDBusVariant>

#include <algorithm>
#include <chrono>
#include <string>

namespace orvane {

namespace {

using namespace std::chrono_literals;

constexpr auto patienceWithServer = 2s;
constexpr int styleNone = 0;
constexpr int styleZoomed = 5; // the desktop's own default: fills the display without distortion

const QString service = QStringLiteral("org.xfce.Xfconf");
const QString path = QStringLiteral("/org/xfce/Xfconf");
const QString channel = QStringLiteral("xfce4-desktop");
const QString lastImage = QStringLiteral("/last-image");
const QString imageStyle = QStringLiteral("/image-style");

QString folderOf(const QString& display)
{
    return QStringLiteral("/backdrop/screen0/monitor%1/").arg(display);
}

/// Returns the desktop's settings. There are none before somebody has changed one.
QVariantMap allProperties(const BlockingBus& bus)
{
    const QDBusMessage answer = bus.ask(service, path, service, QStringLiteral("GetAllProperties"),
                                        {channel, QStringLiteral("/backdrop")});
    const QString error = answer.errorName();
    if (error == QLatin1String("org.xfce.Xfconf.Error.PropertyNotFound") ||
        error == QLatin1String("org.xfce.Xfconf.Error.ChannelNotFound"))
        return {};
    BlockingBus::check(answer);
    return qdbus_cast<QVariantMap>(answer.arguments().value(0));
}

void setProperty(const BlockingBus& bus, const QString& property, const QVariant& value)
{
    bus.call(service, path, service, QStringLiteral("SetProperty"),
             {channel, property, QVariant::fromValue(QDBusVariant(value))});
}

/// Returns 1 where nobody tells.
int workspaceCount()
{
    const auto link = XLink::open({}, within(patienceWithServer)).link;
    if (!link)
        return 1;
    XExchange exchange(*link, within(patienceWithServer));
    const std::string name = "_NET_NUMBER_OF_DESKTOPS";
    const auto atom = exchange.reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(link->xcb(), 1, static_cast<std::uint16_t>(name.size()), name.data()));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return 1;
    const auto numbers = exchange.numbers(exchange.askProperty(link->root(), atom->atom, XCB_ATOM_CARDINAL));
    constexpr std::uint32_t most = 64; // a number that somebody else has written
    return numbers.empty() ? 1 : static_cast<int>(std::clamp(numbers.front(), 1U, most));
}

} // namespace

bool XfcePicture::isThere(const BlockingBus& bus)
{
    return bus.hasOwner(QStringLiteral("org.xfce.xfdesktop"));
}

void XfcePicture::set(const BlockingBus& bus, const QString& picture, const QList<Screen>& screens)
{
    const QVariantMap properties = allProperties(bus);
    const int workspaces = workspaceCount();
    for (const Screen& screen : screens) {
        for (const QString& folder : workspaceFolders(properties, screen.localizedName, workspaces)) {
            if (lacksStyle(properties, folder))
                setProperty(bus, folder + imageStyle, styleZoomed);
            setProperty(bus, folder + lastImage, picture);
        }
    }
}

QStringList XfcePicture::workspaceFolders(const QVariantMap& properties, const QString& display,
                                          int workspaces)
{
    const QString prefix = folderOf(display);
    QStringList folders;
    for (int i = 0; i < workspaces; ++i)
        folders.append(prefix + QStringLiteral("workspace%1").arg(i));
    for (const QString& property : properties.keys()) {
        const QString folder = property.section(u'/', 0, -2);
        if (folder.startsWith(prefix + QLatin1String("workspace")) && !folders.contains(folder))
            folders.append(folder);
    }
    return folders;
}

bool XfcePicture::lacksStyle(const QVariantMap& properties, const QString& folder)
{
    const QVariant style = properties.value(folder + imageStyle);
    return !style.isValid() || style.toInt() == styleNone;
}

} // namespace orvane
