// Further parts of rows: choices, lists that follow a value, small buttons and texts.
#pragma once

#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

namespace orvane {

/// One choice of a few, all in sight, in one row of a section. `label` is for assistive technology alone.
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

/// A single line that can be marked and copied; the middle gives way where room is short.
struct OrvaSelectableText {
    Live<QString> text;
};

/// A button of a symbol alone, without a border. `help` is its tool tip.
struct OrvaIconButton {
    QString systemImage;
    QString help;
    QString accessibleName;
    std::function<void()> action;
};

/// Takes what room its row has left.
struct OrvaSpacer {};

/// A list of views made anew from its value. Views that come again under an equal key are kept, with the
/// focus on them.
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
