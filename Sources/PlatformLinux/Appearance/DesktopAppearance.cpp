#include "PlatformLinux/Appearance/DesktopAppearance.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>

namespace orvane {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");

const QString xfconfService = QStringLiteral("org.xfce.Xfconf");
const QString xfconfPath = QStringLiteral("/org/xfce/Xfconf");
const QString xfconfChannel = QStringLiteral("xsettings");
const QString themeProperty = QStringLiteral("/Net/ThemeName");

/// The colour from which the toolkit makes a whole light palette.
constexpr QColor lightButton(0xef, 0xef, 0xef);

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
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, QStringLiteral("Read"));
    call.setAutoStartService(false);
    call.setArguments({appearanceSpace, schemeKey});
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            portalChanged(appearanceSpace, schemeKey, reply.value());
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
    if (space != appearanceSpace || key != schemeKey)
        return;
    m_portal = schemeOfPortal(value.variant());
    apply();
}

void DesktopAppearance::xfconfChanged(const QString& channel, const QString& property,
                                      const QDBusVariant& value)
{
    if (channel != xfconfChannel || property != themeProperty)
        return;
    m_theme = schemeOfTheme(value.variant());
    apply();
}

void DesktopAppearance::apply()
{
    const std::optional<ColorScheme> scheme = m_portal ? m_portal : m_theme;
    const bool dark = scheme ? scheme == ColorScheme::dark : isDark(m_original);
    if (dark == isDark(QGuiApplication::palette()))
        return;
    if (dark == isDark(m_original))
        QGuiApplication::setPalette(m_original);
    else
        QGuiApplication::setPalette(dark ? darkPalette() : QPalette(lightButton));
}

} // namespace orvane
