// Plain building stones between the rows and the pages: text, stacks, links, popovers.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QString>

#include <functional>

namespace orvane {

/// Text in a role and a colour; several lines where room is short.
struct OrvaText {
    Live<QString> text;
    OrvaFont font = OrvaFont::body;
    OrvaColor color = OrvaColor::primary;
};

/// Room of `side` points before the content.
struct OrvaInset {
    double side = 0;
    AnyView content;

    [[nodiscard]] QList<AnyView> children() const { return {content}; }
};

/// A symbol of `side` points.
struct OrvaSymbolMark {
    QString systemImage;
    double side = 16;
    OrvaColor color = OrvaColor::primary;
};

/// Side by side on one line, by their middles; `spacing` in points.
struct OrvaHStack {
    double spacing = 0;
    QList<AnyView> content;

    [[nodiscard]] QList<AnyView> children() const { return content; }
};

/// One below the other, at the leading edge; `spacing` in points.
struct OrvaVStack {
    double spacing = 0;
    QList<AnyView> content;

    [[nodiscard]] QList<AnyView> children() const { return content; }
};

/// Where the items of a line begin: right behind each other, or in columns as wide as the widest item.
enum class OrvaWrapColumns { none, equal };

/// Side by side in as many lines as it takes; `spacing` in points, between lines too.
struct OrvaWrap {
    double spacing = 0;
    QList<AnyView> content;
    OrvaWrapColumns columns = OrvaWrapColumns::none;

    [[nodiscard]] QList<AnyView> children() const { return content; }
};

/// A button that is text alone, in the colour of links. The symbol follows the title.
struct OrvaTextButton {
    QString title;
    std::function<void()> action;
    std::optional<QString> systemImage = std::nullopt;
    /// Its tool tip, and its accessible description.
    QString help = {};
};

/// A chip that can be pressed. `help` is its tool tip and, before the chip's text, its accessible name.
struct OrvaChipButton {
    OrvaChip chip;
    QString help;
    std::function<void()> action;
};

/// What hangs on an anchor while `isPresented`: a small panel inside the window, made anew at each opening. A
/// click beside it, Escape and focus that goes elsewhere close it. `padding` goes to the outline of the
/// controls in it, whose room for focus rings lies beyond.
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

QWidget* makeOrvaWidget(const OrvaText& text);
QWidget* makeOrvaWidget(const OrvaInset& inset);
QWidget* makeOrvaWidget(const OrvaSymbolMark& mark);
QWidget* makeOrvaWidget(const OrvaHStack& stack);
QWidget* makeOrvaWidget(const OrvaVStack& stack);
QWidget* makeOrvaWidget(const OrvaWrap& wrap);
QWidget* makeOrvaWidget(const OrvaTextButton& button);
QWidget* makeOrvaWidget(const OrvaChipButton& button);
QWidget* makeOrvaWidget(const OrvaPopover& popover);

} // namespace orvane
