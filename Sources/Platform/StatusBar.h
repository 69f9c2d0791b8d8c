// The program's items in the desktop's status area. Main thread.
#pragma once

#include "Platform/EventFlags.h"
#include "Platform/Menu.h"
#include "Platform/TemplateImage.h"

#include <functional>
#include <memory>

namespace orvane {

/// A click as a status item reports it. The numbers of the types are those of `EventType`.
struct StatusItemEvent {
    enum class Type { leftMouseUp = 2, rightMouseUp = 4 };
    Type type = Type::leftMouseUp;
    EventFlags modifierFlags = 0;
};

/// One item. It stands in the status area for as long as the object lives; where the desktop has no status
/// area, it waits for one to appear.
class StatusItem {
public:
    /// The two special lengths: a square, and as wide as the content.
    static constexpr double squareLength = -2;
    static constexpr double variableLength = -1;

    /// Returns the menu's content; called at each opening.
    using MenuDelegate = std::function<Menu()>;
    /// Called for each click while no menu is attached. The event is absent where the desktop doesn't say
    /// what kind of click it was. A right click may do nothing but show a menu: a desktop that draws menus
    /// itself has to ask for the menu ahead of the click.
    using Action = std::function<void(const StatusItemEvent* currentEvent)>;

    virtual ~StatusItem() = default;

    /// Sets the name by which the desktop remembers where the user wants the item. To be called when the item
    /// is made.
    virtual void setAutosaveName(const QString& name) = 0;
    virtual void setImage(const TemplateImage& image) = 0;
    virtual void setToolTip(const QString& text) = 0;
    virtual void setAction(Action action) = 0;
    /// Attaches a menu, which every click opens from then on; null takes it off.
    virtual void setMenu(MenuDelegate menuNeedsUpdate) = 0;
    /// Acts as a click does: opens the attached menu in place, or calls the action without an event.
    virtual void performClick() = 0;
};

class StatusBar {
public:
    /// The part of the desktop where items are seen. It is unknown before the first item has looked for it.
    enum class Area { unknown, absent, present };

    virtual ~StatusBar() = default;

    [[nodiscard]] virtual Area area() const = 0;
    /// Posted on the default notification centre when area() has changed.
    static QString areaDidChangeNotification()
    {
        return QStringLiteral("net.lindenrow.orvane.statusAreaDidChange");
    }
    /// Makes an item `length` points wide, or of one of the two special lengths.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem(double length) = 0;
};

} // namespace orvane
