// Parts of a pane above its rows: sections on cards, stacks, helping text.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <QString>

namespace orvane {

/// A stack without spacing, with a thin divider between the visible children: not before the first, not after
/// the last, and none for a child that a condition leaves out.
struct DividedVStack {
    QList<AnyView> content;

    [[nodiscard]] QList<AnyView> children() const { return content; }
};

struct OrvaCard {
    QList<AnyView> content;

    [[nodiscard]] QList<AnyView> children() const { return {DividedVStack{content}}; }
};

/// A heading of symbol and title above a card, and a footnote under it.
struct OrvaSection {
    std::optional<QString> title = std::nullopt;
    std::optional<QString> systemImage = std::nullopt;
    std::optional<Live<QString>> footnote = std::nullopt;
    QList<AnyView> content;

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

/// Helping text over several lines.
struct OrvaCalloutText {
    Live<QString> text;
};

/// Helping text in the small font of footnotes.
struct OrvaCaptionText {
    Live<QString> text;
};

/// The root of a settings pane: sections, `sectionGap` apart.
struct OrvaPane {
    QList<AnyView> content;

    [[nodiscard]] QList<AnyView> children() const { return content; }
};

QWidget* makeOrvaWidget(const DividedVStack& stack);
QWidget* makeOrvaWidget(const OrvaCard& card);
QWidget* makeOrvaWidget(const OrvaCalloutText& text);
QWidget* makeOrvaWidget(const OrvaCaptionText& text);
QWidget* makeOrvaWidget(const OrvaPane& pane);

} // namespace orvane
