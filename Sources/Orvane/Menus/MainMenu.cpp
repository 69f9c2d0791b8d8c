#include "Orvane/Menus/MainMenu.h"

#include "Platform/Application.h"
#include "Platform/Platform.h"

#include <QStringView>

#include <span>
#include <utility>

namespace orvane {

namespace {

/// A row without a title is a separator.
struct Row {
    QStringView title = {};
    QStringView selector = {};
    QStringView keyEquivalent = {};
};

constexpr Row aboutRows[] = {
    {u"About Orvane", u"orderFrontStandardAboutPanel:"},
    {},
};
constexpr Row endRows[] = {
    {u"Hide Orvane", u"hide:", u"h"},
    {u"Quit Orvane", u"terminate:", u"q"},
};
constexpr Row editRows[] = {
    {u"Undo", u"undo:", u"z"},
    {u"Redo", u"redo:", u"Z"},
    {},
    {u"Cut", u"cut:", u"x"},
    {u"Copy", u"copy:", u"c"},
    {u"Paste", u"paste:", u"v"},
    {u"Select All", u"selectAll:", u"a"},
};
constexpr Row windowRows[] = {
    {u"Minimize", u"performMiniaturize:", u"m"},
    {u"Close", u"performClose:", u"w"},
};

QList<MenuItem> items(std::span<const Row> rows)
{
    QList<MenuItem> items;
    for (const Row& row : rows) {
        MenuItem item;
        item.kind = row.title.isEmpty() ? MenuItem::Kind::separator : MenuItem::Kind::item;
        item.title = row.title.toString();
        item.selector = row.selector.toString();
        item.keyEquivalent = row.keyEquivalent.toString();
        items.append(item);
    }
    return items;
}

QList<MenuItem> applicationItems(MenuItem::Action checkForUpdates)
{
    QList<MenuItem> all = items(aboutRows);
    if (checkForUpdates) {
        MenuItem check;
        check.title = QStringLiteral("Check for Updates…");
        check.action = std::move(checkForUpdates);
        all << check << MenuItem::separator();
    }
    return all << items(endRows);
}

MenuItem menu(const QString& title, QList<MenuItem> items)
{
    MenuItem item;
    item.title = title;
    item.submenu = std::make_shared<Menu>(Menu{title, std::move(items)});
    return item;
}

} // namespace

std::shared_ptr<Menu> MainMenu::build(MenuItem::Action checkForUpdates)
{
    auto bar = std::make_shared<Menu>();
    bar->items = {menu(QStringLiteral("Orvane"), applicationItems(std::move(checkForUpdates))),
                  menu(QStringLiteral("Edit"), items(editRows)),
                  menu(QStringLiteral("Window"), items(windowRows))};
    platform().application.setWindowsMenu(bar->items.last().submenu);
    return bar;
}

} // namespace orvane
