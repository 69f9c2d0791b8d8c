#include "Orvane/Menus/MenuBarController.h"

#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Brand/ShellText.h"
#include "Orvane/Home/HomeWindowController.h"
#include "Orvane/Launch/AppEnvironment.h"
#include "Orvane/Menus/ActionBox.h"
#include "Orvane/Menus/MenuBarIcon.h"
#include "OrvaneKit/Theme/SystemSymbol.h"
#include "Platform/Application.h"
#include "Platform/Platform.h"
#include "Platform/StatusBar.h"

#include <QMarginsF>
#include <QPainter>

namespace orvane {

namespace {

/// In points.
namespace headerBox {
constexpr QSizeF size(230, 30);
constexpr QMarginsF padding(13, 7, 13, 3);
constexpr double typeSize = 14;
} // namespace headerBox

void drawHeader(QPainter& painter, const QRectF& rect, const QColor& text)
{
    using namespace headerBox;
    painter.save();
    painter.translate(rect.topLeft());
    painter.scale(rect.width() / size.width(), rect.height() / size.height());
    OrvaneBrand::paintWordmark(painter, QRectF({}, size).marginsRemoved(padding), typeSize, {.head = text});
    painter.restore();
}

MenuItem headerItem()
{
    MenuItem header;
    header.title = OrvaneBrand::wordHead + OrvaneBrand::wordTail;
    header.enabled = false;
    header.view = MenuItemView{headerBox::size, &drawHeader};
    return header;
}

} // namespace

MenuBarController::MenuBarController(std::weak_ptr<AppEnvironment> environment)
    : m_environment(std::move(environment))
{
}

MenuBarController::~MenuBarController() = default;

void MenuBarController::setVisible(bool visible)
{
    if (visible == (m_statusItem != nullptr))
        return;
    if (!visible) {
        m_statusItem.reset();
        return;
    }
    m_statusItem = platform().systemStatusBar.makeStatusItem(StatusItem::variableLength);
    m_statusItem->setAutosaveName(QStringLiteral("net.lindenrow.orvane"));
    m_statusItem->setImage(MenuBarIcon::statusImage());
    m_statusItem->setToolTip(QStringLiteral("Orvane"));
    m_statusItem->setMenu([weak = weak_from_this()] {
        const auto self = weak.lock();
        return self ? self->menuNeedsUpdate() : Menu();
    });
}

Menu MenuBarController::menuNeedsUpdate()
{
    Menu menu;
    menu.items.append(headerItem());
    menu.items.append(MenuItem::separator());

    const auto environment = m_environment.lock();
    const auto active =
        environment ? environment->registry().activeEntries() : QList<CapabilityRegistry::Entry>();
    for (const CapabilityRegistry::Entry& entry : active)
        menu.items.append(capabilityItem(entry));
    if (active.isEmpty()) {
        MenuItem none;
        none.title = ShellText::tr("No capabilities are on");
        none.enabled = false;
        menu.items.append(none);
        menu.items.append(actionItem(ShellText::tr("Turn features on…"), QStringLiteral("switch.2"),
                                     &MenuBarController::openHome));
    }

    menu.items.append(MenuItem::separator());
    menu.items.append(
        actionItem(ShellText::tr("Open Orvane…"), QStringLiteral("macwindow"), &MenuBarController::openHome));
    menu.items.append(
        actionItem(ShellText::tr("Quit Orvane"), QStringLiteral("power"), &MenuBarController::quitApp));
    menu.items.last().keyEquivalent = QStringLiteral("q");
    return menu;
}

MenuItem MenuBarController::actionItem(const QString& title, const QString& symbol,
                                       void (MenuBarController::*action)())
{
    MenuItem item;
    item.title = title;
    item.image = SystemSymbol::image(symbol);
    item.action = [weak = weak_from_this(), action](const MenuItem&) {
        if (const auto self = weak.lock())
            ((*self).*action)();
    };
    return item;
}

MenuItem MenuBarController::capabilityItem(const CapabilityRegistry::Entry& entry)
{
    const QList<MenuBarItem> contributions = entry.capability->menuBarContributions();
    if (contributions.isEmpty()) {
        return actionItem(entry.metadata().displayName, entry.metadata().symbolName,
                          &MenuBarController::openHome);
    }
    MenuItem item;
    item.title = entry.metadata().displayName;
    item.image = SystemSymbol::image(entry.metadata().symbolName);
    item.submenu = std::make_shared<Menu>();
    for (const MenuBarItem& contribution : contributions) {
        MenuItem child;
        child.title = contribution.title;
        child.representedObject = std::make_shared<ActionBox>(ActionBox{contribution});
        child.action = &MenuBarController::runAction;
        if (contribution.systemImage)
            child.image = SystemSymbol::image(*contribution.systemImage);
        item.submenu->items.append(child);
    }
    return item;
}

void MenuBarController::runAction(const MenuItem& sender)
{
    if (const auto* box = std::any_cast<std::shared_ptr<ActionBox>>(&sender.representedObject))
        (*box)->item.action();
}

void MenuBarController::openHome()
{
    if (const auto environment = m_environment.lock())
        environment->homeWindow().show();
}

void MenuBarController::quitApp()
{
    platform().application.terminate();
}

} // namespace orvane
