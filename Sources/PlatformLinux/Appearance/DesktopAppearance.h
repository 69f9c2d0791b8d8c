// Gives the program the light or dark colours and the accent colour that the desktop is set to, and follows
// them while it runs. The accent colour is the palette's highlight.
//
// The desktop portal's choice counts first, then KDE's accent, then the theme of Xfce or GNOME. Where nobody
// says anything, the toolkit's own colours stay. Asks without waiting; starts no service. Main thread.
#pragma once

#include <QColor>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QPalette>

#include <optional>

namespace orvane {

enum class ColorScheme { light, dark };

/// Reads the portal's number: nothing for "no preference" and for unknown numbers.
std::optional<ColorScheme> schemeOfPortal(const QVariant& value);
/// Reads the name of a GTK theme, such as "Greybird-dark".
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
    void ask(const QString& space, const QString& key);
    void askXfconf();
    void takeTheme(const QString& name);
    void apply();
    [[nodiscard]] std::optional<QColor> accent() const;

    const QPalette m_original;
    QDBusConnection m_bus; // the connection that the process has anyway
    QDBusServiceWatcher m_services;
    std::optional<ColorScheme> m_portal;
    std::optional<ColorScheme> m_theme;
    std::optional<QColor> m_portalAccent;
    std::optional<QColor> m_kdeAccent;
    std::optional<QColor> m_themeAccent;
    QString m_themeName;
    /// The palette that was set last.
    struct Applied {
        bool isDark = false;
        std::optional<QColor> accent = {};
        friend bool operator==(const Applied&, const Applied&) = default;
    };
    Applied m_applied;
};

} // namespace orvane
