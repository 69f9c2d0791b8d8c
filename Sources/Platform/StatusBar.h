// Items of our own in the desktop's status area. Main thread.
#pragma once

#include "Platform/EventFlags.h"
#include "Platform/Menu.h"
#include "Platform/TemplateImage.h"

#include <functional>
#include <memory>

namespace orvane {

/// A click as a status item reports it. The type's numbers are those of the event's.
struct StatusItemEvent {
    enum class Type { leftMouseUp = 2, rightMouseUp = 4 };
    Type type = Type::leftMouseUp;
    EventFlags modifierFlags = 0;
};

/// One item. It stands in the status area for as long as the object lives; where the desktop has no status
/// area, it waits for one to appear.
class StatusItem {
public:
    /// Negative lengths: a square, and as wide as the content.
    static constexpr double squareLength = -2;
    static constexpr double variableLength = -1;

    /// Asked for the menu's content at each opening.
    using MenuDelegate = std::function<Menu()>;
    /// Told of each click while no menu is attached. The event is absent where the desktop doesn't say
    /// what kind of click it was. A right click must do nothing but show a menu, if anything: a desktop
    /// that renders menus itself has to ask for it ahead of the click.
    using Action = std::function<void(const StatusItemEvent* currentEvent)>;

    virtual ~StatusItem() = default;

    /// The name by which the desktop remembers where the user wants the item. To be set when it is made.
    virtual void setAutosaveName(const QString& name) = 0;
    virtual void setImage(const TemplateImage& image) = 0;
    virtual void setToolTip(const QString& text) = 0;
    virtual void setAction(Action action) = 0;
    /// While one is attached, every click opens it; null takes it off.
    virtual void setMenu(MenuDelegate menuNeedsUpdate) = 0;
    /// Acts as a click does: opens the attached menu in place, or calls the action without an event.
    virtual void performClick() = 0;
};

class StatusBar {
public:
    virtual ~StatusBar() = default;
    /// A new item of `length` points, or one of the two special lengths.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem(double length) = 0;
};

} // namespace orvane
