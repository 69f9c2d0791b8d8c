#include "PlatformLinux/Menus/TrayMenuView.h"

#include "PlatformLinux/Menus/KeyEquivalent.h"
#include "PlatformLinux/Menus/MenuText.h"
#include "PlatformLinux/Menus/TemplateTint.h"
#include "PlatformLinux/X11/ApplicationLink.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <QCursor>
#include <QGuiApplication>
#include <QIconEngine>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QScreen>
#include <QWidgetAction>
#include <QWindow>

#include <chrono>
#include <utility>

namespace orvane {

namespace {

/// Compositors treat menus in their own way, but Qt gives a menu without a parent window the type of a normal
/// window.
void markAsPopupMenu(WId window)
{
    const auto toolkit = X11Connection::ofApplication();
    const auto x = ApplicationLink::get();
    if (!toolkit || !x)
        return;
    xcb_change_property(toolkit->xcb(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window),
                        x->atoms().windowType, XCB_ATOM_ATOM, 32, 1, &x->atoms().windowTypePopupMenu);
}

constexpr auto keyEquivalentProperty = "orvaneKeyEquivalent";
constexpr auto keyMaskProperty = "orvaneKeyMask";
/// A menu may contain itself.
constexpr int deepestLevel = 8;

/// Draws a template in the colours of the widget that shows it. An icon of ready pixmaps would leave a copy
/// of each in the toolkit's cache at each opening, since they are never the same ones.
class TemplateIconEngine : public QIconEngine {
public:
    TemplateIconEngine(TemplateImage image, const QPalette& palette)
        : m_image(std::move(image)), m_palette(palette)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const double ratio = painter->device()->devicePixelRatioF();
        painter->drawImage(rect, picture(rect.size() * ratio, mode));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        return QPixmap::fromImage(picture(size, mode));
    }
    [[nodiscard]] QIconEngine* clone() const override { return new TemplateIconEngine(*this); }

private:
    [[nodiscard]] QImage picture(const QSize& pixels, QIcon::Mode mode) const
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        return tinted(m_image, pixels, m_palette.color(group, QPalette::WindowText));
    }

    TemplateImage m_image;
    QPalette m_palette;
};

/// Nothing else has the keyboard while the menu is open, so Super is as good a command key as Control.
bool isChosenBy(const MenuItem& item, QKeyCombination key)
{
    if (isKeyEquivalent(item, key))
        return true;
    Qt::KeyboardModifiers modifiers = key.keyboardModifiers();
    if (!modifiers.testFlag(Qt::MetaModifier) || modifiers.testFlag(Qt::ControlModifier))
        return false;
    modifiers.setFlag(Qt::MetaModifier, false);
    modifiers.setFlag(Qt::ControlModifier, true);
    return isKeyEquivalent(item, QKeyCombination(modifiers, key.key()));
}

/// A menu item that draws itself.
class ItemWidget : public QWidget {
public:
    ItemWidget(MenuItemView view, QWidget* parent) : QWidget(parent), m_view(std::move(view)) {}

    [[nodiscard]] QSize sizeHint() const override { return m_view.size.toSize(); }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

private:
    void paintEvent(QPaintEvent*) override
    {
        // The colours aren't those of the disabled group: an item without an action isn't out of use.
        QPainter painter(this);
        m_view.draw(painter, QRectF({}, m_view.size),
                    palette().color(QPalette::Active, QPalette::WindowText));
    }

    MenuItemView m_view;
};

} // namespace

TrayMenuView::TrayMenuView(QObject* parent) : QObject(parent)
{
    using namespace std::chrono_literals;
    m_grabAgain.setSingleShot(true);
    m_grabAgain.setInterval(20ms);
    connect(&m_grabAgain, &QTimer::timeout, this, &TrayMenuView::holdPointer);
}

TrayMenuView::~TrayMenuView()
{
    close();
}

void TrayMenuView::popUp(const Menu& menu, std::optional<QRect> item)
{
    close();
    auto* popup = new QMenu;
    markAsPopupMenu(popup->winId());
    m_popup = popup;
    // The menu is deleted after the choice, which is reported after the menu has closed.
    connect(popup, &QMenu::aboutToHide, popup, &QObject::deleteLater);
    connect(popup, &QMenu::aboutToHide, this, &TrayMenuView::letPointerGo);
    fill(*popup, menu, 1);
    if (popup->isEmpty()) {
        delete popup;
        return;
    }
    QPoint place = QCursor::pos();
    if (item) {
        const QSize size = popup->sizeHint();
        const QScreen* screen = QGuiApplication::screenAt(item->center());
        const bool fitsBelow = !screen || item->bottom() + 1 + size.height() <= screen->geometry().bottom();
        place = fitsBelow ? item->bottomLeft() + QPoint(0, 1) : item->topLeft() - QPoint(0, size.height());
    }
    popup->popup(place);
    holdPointer();
}

void TrayMenuView::holdPointer()
{
    // A panel that reports a click as the button goes down holds the pointer until it comes up. The grab by
    // which the menu closes at a click elsewhere fails meanwhile, which Qt doesn't notice. The server
    // announces the end of the panel's grab to nobody, so we look again while the button is down.
    const auto x = ApplicationLink::get();
    if (!x || !m_popup || !m_popup->isVisible())
        return;
    constexpr unsigned realButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    const auto pointer = x->pointer();
    if (pointer && (pointer->mask & realButtons)) {
        m_failedToHold = true;
        m_grabAgain.start();
    } else if (std::exchange(m_failedToHold, false)) {
        m_popup->windowHandle()->setMouseGrabEnabled(true);
        m_popup->windowHandle()->setKeyboardGrabEnabled(true);
    }
}

void TrayMenuView::letPointerGo()
{
    m_grabAgain.stop();
    m_failedToHold = false;
    if (QWindow* window = m_popup ? m_popup->windowHandle() : nullptr) {
        window->setMouseGrabEnabled(false);
        window->setKeyboardGrabEnabled(false);
    }
}

void TrayMenuView::close()
{
    if (!m_popup)
        return;
    m_popup->close();
    m_popup->deleteLater();
    m_popup.clear();
}

void TrayMenuView::fill(QMenu& popup, const Menu& menu, int depth)
{
    popup.installEventFilter(this);
    for (const MenuItem& item : menu.items) {
        if (item.kind == MenuItem::Kind::separator)
            popup.addSeparator();
        else
            addItem(popup, item, depth);
    }
}

QAction* TrayMenuView::addItem(QMenu& popup, const MenuItem& item, int depth)
{
    QAction* action = nullptr;
    if (item.view) {
        auto* widgetAction = new QWidgetAction(&popup);
        auto* widget = new ItemWidget(*item.view, &popup);
        widget->setAccessibleName(plainMenuTitle(item.title));
        widgetAction->setDefaultWidget(widget);
        popup.addAction(widgetAction);
        action = widgetAction;
    } else if (item.submenu) {
        QMenu* submenu = popup.addMenu(widgetMenuText(item.title));
        if (depth < deepestLevel)
            fill(*submenu, *item.submenu, depth + 1);
        action = submenu->menuAction();
    } else {
        action = popup.addAction(widgetMenuText(item.title));
    }
    action->setEnabled(item.enabled && (item.action || item.submenu));
    if (item.image)
        action->setIcon(QIcon(new TemplateIconEngine(*item.image, popup.palette())));
    action->setIconVisibleInMenu(true);
    if (item.state == MenuItem::State::on) {
        action->setCheckable(true);
        action->setChecked(true);
    }
    if (const QString keys = keyEquivalentText(item); !keys.isEmpty() && !item.view && !item.submenu) {
        action->setProperty(keyEquivalentProperty, item.keyEquivalent);
        action->setProperty(keyMaskProperty, QVariant::fromValue(item.keyEquivalentModifierMask));
        action->setText(action->text() + u'\t' + keys);
    }
    if (item.action) {
        connect(action, &QAction::triggered, this, [this, item] {
            QMetaObject::invokeMethod(
                this, [item] { item.action(item); }, Qt::QueuedConnection);
        });
    }
    return action;
}

bool TrayMenuView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* popup = qobject_cast<QMenu*>(watched);
        if (popup && chooseByKey(*popup, *static_cast<QKeyEvent*>(event)))
            return true;
    }
    return QObject::eventFilter(watched, event);
}

bool TrayMenuView::chooseByKey(const QMenu& popup, const QKeyEvent& key)
{
    for (QAction* action : popup.actions()) {
        MenuItem item;
        item.keyEquivalent = action->property(keyEquivalentProperty).toString();
        item.keyEquivalentModifierMask = action->property(keyMaskProperty).value<EventFlags>();
        if (!action->isEnabled() || !isChosenBy(item, key.keyCombination()))
            continue;
        if (m_popup)
            m_popup->close();
        action->trigger();
        return true;
    }
    return false;
}

} // namespace orvane
