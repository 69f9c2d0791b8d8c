// Parts of the chips of shortcuts: chips that can be pressed, in lines, with panels at them. Main thread.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaPage.h"

#include <QString>

#include <functional>

namespace orvane {

/// How the items of a line are placed: directly after each other, or in columns as wide as the widest item.
enum class OrvaWrapColumns { none, equal };

/// Views side by side in as many lines as needed; `spacing` in points, between lines too.
struct OrvaWrap {
    double spacing = 0;
    QList<AnyView> content;
    OrvaWrapColumns columns = OrvaWrapColumns::none;

    [[nodiscard]] QList<AnyView> children() const { return content; }
};

/// A chip that can be pressed. `help` is its tool tip and, before the chip's text, its accessible name.
struct OrvaChipButton {
    OrvaChip chip;
    QString help;
    std::function<void()> action;
};

/// A small panel at an anchor inside the window while `isPresented`, made anew at each opening. A click
/// beside it, Escape and focus that goes elsewhere close it. `padding` reaches to the outline of its
/// controls, whose room for focus rings lies beyond.
struct OrvaPopover {
    Binding<bool> isPresented;
    double width = 260;
    double padding = 14;
    QString accessibleName;
    AnyView anchor;
    std::function<AnyView()> content;

    [[nodiscard]] QList<AnyView> children() const
    {
        QList<AnyView> views{anchor};
        if (isPresented.get())
            views.append(content());
        return views;
    }
};

QWidget* makeOrvaWidget(const OrvaWrap& wrap);
QWidget* makeOrvaWidget(const OrvaChipButton& button);
QWidget* makeOrvaWidget(const OrvaPopover& popover);

} // namespace orvane
