// Further parts of rows: choices, lists that follow a value, small buttons and texts.
#pragma once

#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

namespace orvane {

/// A choice of a few, all of them visible, in one row of a section. `label` is for assistive technology
/// alone.
struct OrvaRadioGroup {
    QString label;
    Binding<QString> selection;
    Live<QList<OrvaPickerOption>> content;
};

/// A row of small text with a symbol before it, both in one colour.
struct OrvaCaptionRow {
    Live<QString> text;
    std::optional<QString> systemImage = std::nullopt;
    OrvaColor color = OrvaColor::secondary;
};

/// A single line that can be marked and copied; the middle is left out where room is short.
struct OrvaSelectableText {
    Live<QString> text;
};

/// A button with a symbol alone and no border. `help` is its tool tip.
struct OrvaIconButton {
    QString systemImage;
    QString help;
    QString accessibleName;
    std::function<void()> action;
};

/// Takes the room that is left in its row.
struct OrvaSpacer {};

/// A list of views made anew from its value. Views whose keys occur again are kept, with the focus on them.
struct OrvaForEach {
    struct Item {
        QString key;
        AnyView view;
    };
    Live<QList<Item>> content;

    [[nodiscard]] QList<AnyView> children() const;
};

QWidget* makeOrvaWidget(const OrvaRadioGroup& group);
QWidget* makeOrvaWidget(const OrvaCaptionRow& row);
QWidget* makeOrvaWidget(const OrvaSelectableText& text);
QWidget* makeOrvaWidget(const OrvaIconButton& button);
QWidget* makeOrvaWidget(const OrvaSpacer& spacer);
QWidget* makeOrvaWidget(const OrvaForEach& list);

} // namespace orvane
