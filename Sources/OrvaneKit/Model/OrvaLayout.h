// Plain parts between the rows and the pages: text, stacks, links.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QString>

#include <functional>

namespace orvane {

/// How a text is broken into lines when room is short.
enum class OrvaTextLines {
    wrapped,
    balanced, // the lines are about equally long, so that no word is left alone on the last one
};

/// Text in a role and a colour; several lines where room is short.
struct OrvaText {
    Live<QString> text;
    OrvaFont font = OrvaFont::body;
    OrvaColor color = OrvaColor::primary;
    OrvaTextLines lines = OrvaTextLines::wrapped;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
};

/// Content that is faded and can't be used while the condition doesn't hold.
struct OrvaEnabled {
    Live<bool> condition;
    AnyView content;

    [[nodiscard]] QList<AnyView> children() const { return {content}; }
};

/// The content with `side` points of room before it.
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

/// Views side by side on one line, aligned by their middles; `spacing` in points.
struct OrvaHStack {
    double spacing = 0;
    QList<AnyView> content;

    [[nodiscard]] QList<AnyView> children() const { return content; }
};

/// Views one below the other, at the leading edge; `spacing` in points.
struct OrvaVStack {
    double spacing = 0;
    QList<AnyView> content;

    [[nodiscard]] QList<AnyView> children() const { return content; }
};

/// A button that is text alone, in the colour of links. The symbol follows the title.
struct OrvaTextButton {
    QString title;
    std::function<void()> action;
    std::optional<QString> systemImage = std::nullopt;
    /// Its tool tip and its accessible description.
    QString help = {};
};

QWidget* makeOrvaWidget(const OrvaText& text);
QWidget* makeOrvaWidget(const OrvaEnabled& enabled);
QWidget* makeOrvaWidget(const OrvaInset& inset);
QWidget* makeOrvaWidget(const OrvaSymbolMark& mark);
QWidget* makeOrvaWidget(const OrvaHStack& stack);
QWidget* makeOrvaWidget(const OrvaVStack& stack);
QWidget* makeOrvaWidget(const OrvaTextButton& button);

} // namespace orvane
