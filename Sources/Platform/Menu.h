// A menu as a value: what it says and does, with no toolkit behind it. Whoever shows one renders it.
#pragma once

#include "Platform/TemplateImage.h"

#include <QList>
#include <QString>

#include <any>
#include <functional>
#include <memory>
#include <optional>

namespace orvane {

struct Menu;

struct MenuItem {
    enum class Kind { item, separator };
    enum class State { off, on };
    using Action = std::function<void(const MenuItem& sender)>;

    Kind kind = Kind::item;
    QString title;
    /// Called on the main thread after the menu has closed. An item without action and submenu can't be
    /// chosen.
    Action action;
    bool enabled = true;
    State state = State::off;
    std::optional<TemplateImage> image;
    /// One character that, with Command, chooses the item while its menu is open; upper case adds Shift.
    QString keyEquivalent;
    /// Travels with the item for the action's use.
    std::any representedObject;
    std::shared_ptr<Menu> submenu;
    /// Drawn in place of the title, in a box of its size; the title stays the accessible name.
    std::optional<TemplateImage> view;

    static MenuItem separator()
    {
        MenuItem item;
        item.kind = Kind::separator;
        return item;
    }
};

struct Menu {
    QList<MenuItem> items;
};

} // namespace orvane
