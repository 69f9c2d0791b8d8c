// A menu as a value: its titles, states and actions, with no toolkit behind it. The platform renders it.
#pragma once

#include "Platform/EventFlags.h"
#include "Platform/TemplateImage.h"

#include <QList>
#include <QSizeF>
#include <QString>

#include <any>
#include <functional>
#include <memory>
#include <optional>

class QColor;
class QPainter;
class QRectF;

namespace orvane {

struct Menu;

/// A drawing with colours of its own that an item shows in place of its title.
struct MenuItemView {
    /// In points.
    QSizeF size;
    /// Draws into the given rectangle, which has the shape of `size` at any scale. `text` is the colour of
    /// titles in that menu.
    std::function<void(QPainter& painter, const QRectF& rect, const QColor& text)> draw;
};

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
    /// One character that, with the modifiers of the mask, chooses the item; upper case adds Shift. In a
    /// status menu it counts while the menu is open, in the main menu while a window of the program is in
    /// front.
    QString keyEquivalent;
    EventFlags keyEquivalentModifierMask = eventFlag::command;
    /// True if another layout may move the key equivalent to the key that prints it there.
    bool allowsAutomaticKeyEquivalentLocalization = true;
    /// For an item of the main menu without an action: the command that goes to the object with the focus,
    /// such as "copy:".
    QString selector;
    /// A value that travels with the item for the action's use.
    std::any representedObject;
    /// An object that lives as long as the item or its last copy.
    std::shared_ptr<void> association;
    std::shared_ptr<Menu> submenu;
    /// The title stays the accessible name, and is what a desktop shows that draws the menu itself.
    std::optional<MenuItemView> view;

    static MenuItem separator()
    {
        MenuItem item;
        item.kind = Kind::separator;
        return item;
    }
};

struct Menu {
    /// Posted on the default notification centre when a menu of the program opens and has closed, wherever
    /// the desktop draws it; a submenu's opening posts nothing.
    static QString didBeginTrackingNotification()
    {
        return QStringLiteral("NSMenuDidBeginTrackingNotification");
    }
    static QString didEndTrackingNotification() { return QStringLiteral("NSMenuDidEndTrackingNotification"); }

    QString title;
    QList<MenuItem> items;
};

} // namespace orvane
