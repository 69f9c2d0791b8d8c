// Knows if a menu of the program is open, in a window of its own or drawn by the desktop, and posts it on the
// notification centre. Main thread.
#pragma once

#include <QObject>
#include <QSet>

#include <memory>

namespace orvane {

class NotificationCenter;

class MenuTracking : public QObject {
    Q_OBJECT
public:
    enum class Place {
        none,
        program, // its keys come to a window of this process
        desktop, // its keys go to another process
    };

    /// A menu that the desktop has open, until its end. May outlive the tracking.
    class DesktopMenu {
    public:
        virtual ~DesktopMenu() = default;
    };

    /// Finds the menus of this process by itself. `center` outlives this object.
    explicit MenuTracking(NotificationCenter& center);
    ~MenuTracking() override;

    [[nodiscard]] Place place() const { return m_place; }
    [[nodiscard]] std::unique_ptr<DesktopMenu> beginOnDesktop();

Q_SIGNALS:
    /// Emitted before the notifications.
    void placeChanged();

private:
    class Session;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void update();

    NotificationCenter& m_center;
    /// Menus and their submenus, by address alone: they may be destroyed while they hide.
    QSet<const QObject*> m_shown;
    int m_onDesktop = 0;
    Place m_place = Place::none;
};

} // namespace orvane
