#include "PlatformLinux/Appearance/DesktopAppearance.h"

#include "PlatformLinux/Appearance/AccentColor.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFutureWatcher>
#include <QGuiApplication>
#include <QPromise>
#include <QThreadPool>

#include <memory>

namespace orvane {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");
const QString accentKey = QStringLiteral("accent-color");
// The portal passes on the settings of some desktops under their own names.
const QString kdeSpace = QStringLiteral("org.kde.kdeglobals.General");
const QString kdeAccentKey = QStringLiteral("AccentColor");
const QString gnomeSpace = QStringLiteral("org.gnome.desktop.interface");
const QString gnomeThemeKey = QStringLiteral("gtk-theme");

const QString xfconfService = QStringLiteral("org.xfce.Xfconf");
const QString xfconfPath = QStringLiteral("/org/xfce/Xfconf");
const QString xfconfChannel = QStringLiteral("xsettings");
const QString themeProperty = QStringLiteral("/Net/ThemeName");

/// The colour from which the toolkit makes a whole light palette.
constexpr QColor lightButton(0xef, 0xef, 0xef);
/// Where it isn't the desktop that has set a palette, the highlight is that of the view kit.
constexpr QColor lightHighlight(0x1f, 0x6b, 0xe0);

/// The portal wraps its values in a variant of their own.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

QPalette darkPalette()
{
    const QColor text(0xf2, 0xf2, 0xf4);
    const QColor faint(0x8a, 0x8a, 0x92);
    QPalette palette(text, QColor(0x3a, 0x3a, 0x40), QColor(0x55, 0x55, 0x5c), QColor(0x12, 0x12, 0x14),
                     QColor(0x2c, 0x2c, 0x30), text, Qt::white, QColor(0x28, 0x28, 0x2c),
                     QColor(0x1c, 0x1c, 0x1f));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6d, 0xe8));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x73, 0xa8, 0xff));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3a, 0x40));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

QPalette lightPalette()
{
    QPalette palette(lightButton);
    palette.setColor(QPalette::Highlight, lightHighlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

/// The structure must be left properly, also when it isn't the expected one: the library would leak it.
std::optional<QColor> accentIn(const QVariant& value)
{
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ddd)"))
        return std::nullopt;
    double red = 0, green = 0, blue = 0;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    return accentOfPortal(red, green, blue);
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

std::optional<ColorScheme> schemeOfPortal(const QVariant& value)
{
    const QVariant number = unwrapped(value);
    if (number == QVariant(1u))
        return ColorScheme::dark;
    if (number == QVariant(2u))
        return ColorScheme::light;
    return std::nullopt;
}

std::optional<ColorScheme> schemeOfTheme(const QVariant& name)
{
    const QVariant text = unwrapped(name);
    if (text.typeId() != QMetaType::QString || text.toString().isEmpty())
        return std::nullopt;
    return text.toString().contains(QLatin1String("dark"), Qt::CaseInsensitive) ? ColorScheme::dark
                                                                                : ColorScheme::light;
}

DesktopAppearance::DesktopAppearance()
    : m_original(QGuiApplication::palette()), m_bus(QDBusConnection::sessionBus())
{
    m_applied.isDark = isDark(m_original);
    if (m_bus.isConnected())
        listen();
}

// A change between the subscription and the answer is reported by both.
void DesktopAppearance::listen()
{
    // The type would be unknown by its name until the first message with one, and the connections would fail.
    qRegisterMetaType<QDBusVariant>();
    m_bus.connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                  SLOT(portalChanged(QString, QString, QDBusVariant)));
    m_bus.connect(xfconfService, xfconfPath, xfconfService, QStringLiteral("PropertyChanged"), this,
                  SLOT(xfconfChanged(QString, QString, QDBusVariant)));
    // At the beginning of a session the services may start after this program.
    m_services.setConnection(m_bus);
    m_services.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
    m_services.setWatchedServices({portalService, xfconfService});
    connect(&m_services, &QDBusServiceWatcher::serviceRegistered, this, [this](const QString& service) {
        if (service == portalService)
            askPortal();
        else
            askXfconf();
    });
    askPortal();
    askXfconf();
}

void DesktopAppearance::askPortal()
{
    ask(appearanceSpace, schemeKey);
    ask(appearanceSpace, accentKey);
    ask(kdeSpace, kdeAccentKey);
    ask(gnomeSpace, gnomeThemeKey);
}

void DesktopAppearance::ask(const QString& space, const QString& key)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, QStringLiteral("Read"));
    call.setAutoStartService(false);
    call.setArguments({space, key});
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, space, key] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            portalChanged(space, key, reply.value());
    });
}

void DesktopAppearance::askXfconf()
{
    QDBusMessage call = QDBusMessage::createMethodCall(xfconfService, xfconfPath, xfconfService,
                                                       QStringLiteral("GetProperty"));
    call.setAutoStartService(false);
    call.setArguments({xfconfChannel, themeProperty});
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            xfconfChanged(xfconfChannel, themeProperty, reply.value());
    });
}

void DesktopAppearance::portalChanged(const QString& space, const QString& key, const QDBusVariant& value)
{
    if (space == appearanceSpace && key == schemeKey)
        m_portal = schemeOfPortal(value.variant());
    else if (space == appearanceSpace && key == accentKey)
        m_portalAccent = accentIn(unwrapped(value.variant()));
    else if (space == kdeSpace && key == kdeAccentKey)
        m_kdeAccent = accentOfKde(unwrapped(value.variant()));
    else if (space == gnomeSpace && key == gnomeThemeKey)
        return takeTheme(unwrapped(value.variant()).toString());
    else
        return;
    apply();
}

void DesktopAppearance::xfconfChanged(const QString& channel, const QString& property,
                                      const QDBusVariant& value)
{
    if (channel != xfconfChannel || property != themeProperty)
        return;
    m_theme = schemeOfTheme(value.variant());
    apply();
    takeTheme(unwrapped(value.variant()).toString());
}

/// The theme's style sheet is read on the pool.
void DesktopAppearance::takeTheme(const QString& name)
{
    m_themeName = name;
    using Accent = std::optional<QColor>;
    auto* watcher = new QFutureWatcher<Accent>(this);
    connect(watcher, &QFutureWatcher<Accent>::finished, this, [this, watcher, name] {
        watcher->deleteLater();
        if (name != m_themeName)
            return; // another one has been set meanwhile
        m_themeAccent = watcher->result();
        apply();
    });
    const auto promise = std::make_shared<QPromise<Accent>>();
    promise->start();
    watcher->setFuture(promise->future());
    QThreadPool::globalInstance()->start([promise, name, folders = themeFolders()] {
        promise->addResult(readSelectedColor(name, folders));
        promise->finish();
    });
}

std::optional<QColor> DesktopAppearance::accent() const
{
    if (m_portalAccent)
        return m_portalAccent;
    return m_kdeAccent ? m_kdeAccent : m_themeAccent;
}

void DesktopAppearance::apply()
{
    const std::optional<ColorScheme> scheme = m_portal ? m_portal : m_theme;
    const Applied next{.isDark = scheme ? scheme == ColorScheme::dark : isDark(m_original),
                       .accent = accent()};
    if (next == std::exchange(m_applied, next))
        return;
    QPalette palette = m_original;
    if (next.isDark != isDark(m_original))
        palette = next.isDark ? darkPalette() : lightPalette();
    if (next.accent) {
        constexpr int middle = 150; // of 255; above it black is the easier to read
        palette.setColor(QPalette::Highlight, *next.accent);
        palette.setColor(QPalette::HighlightedText,
                         qGray(next.accent->rgb()) > middle ? Qt::black : Qt::white);
    }
    QGuiApplication::setPalette(palette);
}

} // namespace orvane
