// Rows of a settings pane: a label and a control. Values; all state comes through bindings.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

#include <QString>

namespace orvane {

enum class VerticalAlignment { center, top, firstBaseline };

/// One line with the insets `rowH` and `rowV`.
struct OrvaRow {
    VerticalAlignment alignment = VerticalAlignment::center;
    QList<AnyView> content;

    [[nodiscard]] QList<AnyView> children() const { return content; }
};

/// A title, and under it a caption in a small secondary font.
struct OrvaRowLabel {
    Live<QString> title;
    std::optional<Live<QString>> caption = std::nullopt;
};

struct OrvaToggleRow {
    Live<QString> title;
    std::optional<Live<QString>> caption = std::nullopt;
    Binding<bool> isOn;

    OrvaToggleRow(Live<QString> theTitle, Binding<bool> binding, std::optional<Live<QString>> theCaption = {})
        : title(std::move(theTitle)), caption(std::move(theCaption)), isOn(std::move(binding))
    {
    }
};

/// The title with `detail` on the right, and a full-width slider under them. Without `step` it moves freely.
struct OrvaSliderRow {
    QString title;
    Binding<double> value;
    struct Range {
        double lower;
        double upper;
    } range;
    std::optional<double> step = std::nullopt;
    Live<QString> detail;
};

struct OrvaStepperRow {
    Live<QString> title;
    Binding<int> value;
    struct Range {
        int lower;
        int upper;
    } range;
    int step = 1;
};

/// A choice of a picker; `tag` is the value in the selection.
struct OrvaPickerOption {
    QString title;
    QString tag;

    friend bool operator==(const OrvaPickerOption&, const OrvaPickerOption&) = default;
};

/// A pop-up picker on the right. A selection that no option has shows as nothing chosen.
struct OrvaPickerRow {
    QString title;
    Binding<QString> selection;
    Live<QList<OrvaPickerOption>> content;
};

/// Read-only.
struct OrvaValueRow {
    Live<QString> title;
    Live<QString> value;
    std::optional<Live<QString>> caption = std::nullopt;
};

/// A push button; `systemImage` names a symbol shown before the title.
struct OrvaButton {
    /// A destructive button deletes something for good and is shown in red.
    enum class Role { plain, destructive };

    Live<QString> title;
    std::function<void()> action;
    std::optional<QString> systemImage = std::nullopt;
    Live<bool> enabled = true;
    Role role = Role::plain;
    /// For assistive technology, where several buttons have one title.
    QString accessibleDescription = {};
};

/// Content that is shown only while the condition holds.
struct OrvaIf {
    Live<bool> condition;
    AnyView content;

    [[nodiscard]] QList<AnyView> children() const
    {
        return content ? QList<AnyView>{content} : QList<AnyView>{};
    }
};

/// Returns the room for a focus ring, in points, that the view's widget has on every side: layouts subtract
/// it from their margins.
int ringMargin(const AnyView& view);

QWidget* makeOrvaWidget(const OrvaRow& row);
QWidget* makeOrvaWidget(const OrvaRowLabel& label);
QWidget* makeOrvaWidget(const OrvaToggleRow& row);
QWidget* makeOrvaWidget(const OrvaSliderRow& row);
QWidget* makeOrvaWidget(const OrvaStepperRow& row);
QWidget* makeOrvaWidget(const OrvaPickerRow& row);
QWidget* makeOrvaWidget(const OrvaValueRow& row);
QWidget* makeOrvaWidget(const OrvaButton& button);
QWidget* makeOrvaWidget(const OrvaIf& conditional);

} // namespace orvane
