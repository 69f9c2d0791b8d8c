#include "PlatformLinux/Menus/MenuTracking.h"

#include "Platform/Menu.h"
#include "Platform/NotificationCenter.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMenu>
#include <QPointer>

#include <utility>

namespace orvane {

namespace {

/// The list of a combo box is a menu to the user; it is a private class of the toolkit.
bool isMenu(const QWidget& popup)
{
    return qobject_cast<const QMenu*>(&popup) != nullptr || popup.inherits("QComboBoxPrivateContainer");
}

} // namespace

class MenuTracking::Session : public MenuTracking::DesktopMenu {
public:
    explicit Session(MenuTracking& tracking) : m_tracking(&tracking)
    {
        ++tracking.m_onDesktop;
        tracking.update();
    }
    ~Session() override
    {
        if (!m_tracking)
            return;
        --m_tracking->m_onDesktop;
        m_tracking->update();
    }

private:
    QPointer<MenuTracking> m_tracking;
};

MenuTracking::MenuTracking(NotificationCenter& center) : m_center(center)
{
    QCoreApplication::instance()->installEventFilter(this);
}

MenuTracking::~MenuTracking() = default;

std::unique_ptr<MenuTracking::DesktopMenu> MenuTracking::beginOnDesktop()
{
    return std::make_unique<Session>(*this);
}

bool MenuTracking::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide) {
        if (m_shown.remove(watched))
            update();
    } else if (event->type() == QEvent::Show && watched->isWidgetType()) {
        const auto& widget = static_cast<const QWidget&>(*watched);
        if (widget.windowType() == Qt::Popup && isMenu(widget)) {
            m_shown.insert(watched);
            update();
        }
    }
    return QObject::eventFilter(watched, event);
}

void MenuTracking::update()
{
    Place place = Place::none;
    if (!m_shown.isEmpty())
        place = Place::program;
    else if (m_onDesktop > 0)
        place = Place::desktop;
    const Place before = std::exchange(m_place, place);
    if (before == place)
        return;
    Q_EMIT placeChanged();
    if (before == Place::none)
        m_center.post(Menu::didBeginTrackingNotification());
    else if (place == Place::none)
        m_center.post(Menu::didEndTrackingNotification());
}

} // namespace orvane
