#include "Orvane/Menus/MainMenu.h"

#include "Orvane/Brand/ShellText.h"
#include "OrvaneCore/Base/TextSource.h"
#include "Platform/Application.h"
#include "Platform/Platform.h"

#include <QStringView>

#include <span>
#include <utility>

namespace orvane {

namespace {

/// A row without a selector is a separator.
struct Row {
    TextSource title = {};
    QStringView selector = {};
    QStringView keyEquivalent = {};
};

constexpr Row aboutRows[] = {
    {TextSource("ShellText", "About Orvane"), u"orderFrontStandardAboutPanel:"},
    {},
};
constexpr Row endRows[] = {
    {TextSource("ShellText", "Hide Orvane"), u"hide:", u"h"},
    {TextSource("ShellText", "Quit Orvane"), u"terminate:", u"q"},
};
constexpr Row editRows[] = {
    {TextSource("ShellText", "Undo"), u"undo:", u"z"},
    {TextSource("ShellText", "Redo"), u"redo:", u"Z"},
    {},
    {TextSource("ShellText", "Cut"), u"cut:", u"x"},
    {TextSource("ShellText", "Copy"), u"copy:", u"c"},
    {TextSource("ShellText", "Paste"), u"paste:", u"v"},
    {TextSource("ShellText", "Select All"), u"selectAll:", u"a"},
};
constexpr Row windowRows[] = {
    {TextSource("ShellText", "Minimize"), u"performMiniaturize:", u"m"},
    {TextSource("ShellText", "Close"), u"performClose:", u"w"},
};

QList<MenuItem> items(std::span<const Row> rows)
{
    QList<MenuItem> items;
    for (const Row& row : rows) {
        MenuItem item;
        item.kind = row.selector.isEmpty() ? MenuItem::Kind::separator : MenuItem::Kind::item;
        item.title = row.title.translated();
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
        check.title = ShellText::tr("Check for Updates…");
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
                  menu(ShellText::tr("Edit"), items(editRows)),
                  menu(ShellText::tr("Window"), items(windowRows))};
    platform().application.setWindowsMenu(bar->items.last().submenu);
    return bar;
}

} // namespace orvane
