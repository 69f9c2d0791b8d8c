// Gives the program the light or dark colours that the desktop is set to, and follows it while running.
//
// The desktop portal's choice counts first, then the theme of Xfce. Where neither tells anything, the
// toolkit's own colours stay. Asks without waiting; starts no service. Main thread.
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QPalette>

#include <optional>

namespace orvane {

enum class ColorScheme { light, dark };

/// What the portal's number says: nothing for "no preference" and for what isn't known.
std::optional<ColorScheme> schemeOfPortal(const QVariant& value);
/// What the name of a GTK theme says, such as "Greybird-dark".
std::optional<ColorScheme> schemeOfTheme(const QVariant& name);

class DesktopAppearance : public QObject {
    Q_OBJECT
public:
    DesktopAppearance();

private Q_SLOTS:
    void portalChanged(const QString& space, const QString& key, const QDBusVariant& value);
    void xfconfChanged(const QString& channel, const QString& property, const QDBusVariant& value);

private:
    void listen();
    void askPortal();
    void askXfconf();
    void apply();

    const QPalette m_original;
    QDBusConnection m_bus; // the one that the process has anyway
    QDBusServiceWatcher m_services;
    std::optional<ColorScheme> m_portal;
    std::optional<ColorScheme> m_theme;
};

} // namespace orvane
