#include "PlatformLinux/Menus/MainMenuView.h"

#include "PlatformLinux/Menus/KeyEquivalent.h"
#include "PlatformLinux/X11/WindowManagement.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

namespace orvane {

namespace {

/// A menu may contain itself.
constexpr int deepestLevel = 8;

QList<MenuItem> windowItems()
{
    QList<MenuItem> items;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->windowType() != Qt::Window || !window->isVisible() || window->windowTitle().isEmpty())
            continue;
        MenuItem item;
        item.title = window->windowTitle();
        item.state = window->isActiveWindow() ? MenuItem::State::on : MenuItem::State::off;
        item.action = [target = QPointer(window)](const MenuItem&) {
            if (!target)
                return;
            target->setWindowState(target->windowState() & ~Qt::WindowMinimized);
            target->raise();
            if (const QWindow* handle = target->windowHandle())
                requestActivation(*handle);
        };
        items.append(item);
    }
    return items;
}

} // namespace

void MainMenuView::setMenu(std::shared_ptr<Menu> menu)
{
    QCoreApplication* application = QCoreApplication::instance();
    application->removeEventFilter(this);
    m_popup.close();
    m_menu = std::move(menu);
    if (m_menu)
        application->installEventFilter(this);
}

Menu MainMenuView::rendered() const
{
    return m_menu ? rendered(*m_menu, 1) : Menu();
}

Menu MainMenuView::rendered(const Menu& menu, int depth) const
{
    Menu shown = menu;
    for (MenuItem& item : shown.items) {
        if (item.submenu && depth < deepestLevel) {
            const bool listsWindows = item.submenu == m_windowsMenu;
            Menu inner = rendered(*item.submenu, depth + 1);
            const QList<MenuItem> windows = listsWindows ? windowItems() : QList<MenuItem>();
            if (!windows.isEmpty())
                inner.items << MenuItem::separator() << windows;
            item.submenu = std::make_shared<Menu>(std::move(inner));
        } else if (!item.action && !item.selector.isEmpty()) {
            item.enabled = item.enabled && m_commands.isTaken(item.selector);
            item.action = [send = m_commands.send](const MenuItem& sender) { send(sender.selector); };
        }
    }
    return shown;
}

bool MainMenuView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    // A key that arrives at the window itself was used by nothing in it.
    const auto& widget = static_cast<const QWidget&>(*watched);
    if (!widget.isWindow() || widget.windowType() == Qt::Popup)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() == Qt::Key_F10 && key.modifiers() == Qt::NoModifier) {
        popUp(widget);
        return true;
    }
    return choose(*m_menu, key.keyCombination(), 1);
}

bool MainMenuView::choose(const Menu& menu, QKeyCombination key, int depth)
{
    for (const MenuItem& item : menu.items) {
        if (!item.enabled || item.kind != MenuItem::Kind::item)
            continue;
        if (item.submenu) {
            const std::shared_ptr<Menu> inner = item.submenu;
            if (depth < deepestLevel && choose(*inner, key, depth + 1))
                return true;
        } else if (isKeyEquivalent(item, key) && choose(item)) {
            return true;
        }
    }
    return false;
}

bool MainMenuView::choose(const MenuItem& item)
{
    if (!item.action)
        return !item.selector.isEmpty() && m_commands.send(item.selector);
    // A modal panel that waits for its answer blocks the rest of the program.
    if (QApplication::activeModalWidget())
        return false;
    QMetaObject::invokeMethod(
        this, [item] { item.action(item); }, Qt::QueuedConnection);
    return true;
}

void MainMenuView::popUp(const QWidget& window)
{
    m_popup.popUp(rendered(), QRect(window.mapToGlobal(QPoint(0, 0)), QSize(1, 0)));
}

} // namespace orvane
