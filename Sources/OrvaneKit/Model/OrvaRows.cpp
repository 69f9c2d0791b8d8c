#include "OrvaneKit/Model/OrvaRows.h"

#include "OrvaneKit/Controls/OrvaButtonView.h"
#include "OrvaneKit/Controls/OrvaIconButtonView.h"
#include "OrvaneKit/Controls/OrvaPickerView.h"
#include "OrvaneKit/Controls/OrvaSliderView.h"
#include "OrvaneKit/Controls/OrvaStepperView.h"
#include "OrvaneKit/Controls/OrvaSwitchView.h"
#include "OrvaneKit/Controls/OrvaTextButtonView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Model/OrvaSection.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace orvane {

namespace {

constexpr int rowH = static_cast<int>(Orva::rowH);
constexpr int rowV = static_cast<int>(Orva::rowV);
constexpr int ring = orvaRingMargin;
constexpr int labelGap = 2;
constexpr int controlGap = 16;
constexpr int sliderGap = 4;

/// Margins of a row whose controls have their own room for the focus ring.
constexpr QMargins controlMargins(rowH, rowV - ring, rowH - ring, rowV - ring);

/// A control of a row, which the row alone makes, as a part of its box.
struct Control {
    std::function<QWidget*()> make;
};

QWidget* makeOrvaWidget(const Control& control)
{
    return control.make();
}

/// `vertical` is room for the focus ring of the control beside it.
OrvaBox labelBox(const Live<QString>& title, const std::optional<Live<QString>>& caption = std::nullopt,
                 int vertical = 0)
{
    OrvaBox lines{.axis = OrvaBox::Axis::column,
                  .spacing = labelGap,
                  .margins = QMargins(0, vertical, 0, vertical),
                  .content = {OrvaText{title}}};
    if (caption)
        lines.content.append(OrvaText{*caption, OrvaFont::caption, OrvaColor::secondary});
    return lines;
}

QWidget* makeControlRow(const OrvaBox& label, std::function<QWidget*()> makeControl)
{
    return makeOrvaWidget(OrvaBox{
        .spacing = controlGap,
        .margins = controlMargins,
        .content = {OrvaBoxPart::filling(label), {Control{std::move(makeControl)}, Qt::AlignVCenter}}});
}

Qt::Alignment qtAlignment(VerticalAlignment alignment)
{
    // Lines of one font have their first baselines at equal distances from the top.
    return alignment == VerticalAlignment::center ? Qt::AlignVCenter : Qt::AlignTop;
}

bool takesTheRest(const AnyView& view)
{
    return view.as<OrvaRowLabel>() || view.as<OrvaCalloutText>() || view.as<OrvaSpacer>();
}

QMargins rowMargins(const OrvaRow& row)
{
    QMargins margins(rowH, rowV, rowH, rowV);
    if (row.content.isEmpty())
        return margins;
    margins.setLeft(rowH - ringMargin(row.content.first()));
    margins.setRight(rowH - ringMargin(row.content.last()));
    if (row.alignment == VerticalAlignment::center) {
        int vertical = 0;
        for (const AnyView& view : row.content)
            vertical = std::max(vertical, ringMargin(view));
        margins.setTop(rowV - vertical);
        margins.setBottom(rowV - vertical);
    }
    return margins;
}

} // namespace

int ringMargin(const AnyView& view)
{
    if (view.as<OrvaIconButton>())
        return OrvaIconButtonView::margin;
    if (view.as<OrvaTextButton>())
        return OrvaTextButtonView::margin;
    return view.as<OrvaButton>() || view.as<OrvaSwitch>() || view.as<OrvaSelectableText>() ? orvaRingMargin
                                                                                           : 0;
}

QWidget* makeOrvaWidget(const OrvaRow& row)
{
    OrvaBox line{.spacing = controlGap / 2.0, .margins = rowMargins(row), .content = {}, .endsFree = true};
    for (const AnyView& view : row.content) {
        const auto fill = takesTheRest(view) ? OrvaBoxPart::Fill::all : OrvaBoxPart::Fill::none;
        line.content.append(OrvaBoxPart{view, qtAlignment(row.alignment), fill});
    }
    return makeOrvaWidget(line);
}

QWidget* makeOrvaWidget(const OrvaRowLabel& label)
{
    return makeOrvaWidget(labelBox(label.title, label.caption));
}

QWidget* makeOrvaWidget(const OrvaToggleRow& row)
{
    return makeControlRow(labelBox(row.title, row.caption, ring),
                          [&] { return new OrvaSwitchView(row.isOn, row.title, row.caption); });
}

QWidget* makeOrvaWidget(const OrvaSliderRow& row)
{
    const Control detail{[&] {
        return new OrvaTextView(row.detail, OrvaFont::caption, OrvaColor::secondary,
                                OrvaTextView::Wrapping::singleLine);
    }};
    const Control slider{[&] {
        return new OrvaSliderView(row.value, row.range.lower, row.range.upper, row.step, row.title,
                                  row.detail);
    }};
    const OrvaBox head{.spacing = controlGap,
                       .margins = QMargins(ring, 0, ring, 0),
                       .content = {OrvaBoxPart::filling(OrvaText{row.title}), detail}};
    return makeOrvaWidget(OrvaBox{.axis = OrvaBox::Axis::column,
                                  .spacing = sliderGap,
                                  .margins = QMargins(rowH - ring, rowV, rowH - ring, rowV - ring),
                                  .content = {head, slider}});
}

QWidget* makeOrvaWidget(const OrvaStepperRow& row)
{
    return makeControlRow(labelBox(row.title, std::nullopt, ring), [&] {
        return new OrvaStepperView(row.value, row.range.lower, row.range.upper, row.step, row.title);
    });
}

QWidget* makeOrvaWidget(const OrvaPickerRow& row)
{
    return makeControlRow(labelBox(row.title, std::nullopt, ring),
                          [&] { return new OrvaPickerView(row.selection, row.content, row.title); });
}

QWidget* makeOrvaWidget(const OrvaValueRow& row)
{
    const OrvaText value{.text = row.value, .color = OrvaColor::secondary, .alignment = Qt::AlignRight};
    return makeOrvaWidget(OrvaBox{
        .spacing = controlGap,
        .margins = QMargins(rowH, rowV, rowH, rowV),
        .content = {OrvaBoxPart::filling(labelBox(row.title, row.caption)), {value, Qt::AlignVCenter}}});
}

QWidget* makeOrvaWidget(const OrvaButton& button)
{
    return new OrvaButtonView(button);
}

QWidget* makeOrvaWidget(const OrvaIf& conditional)
{
    return new OrvaIfView(conditional.condition, conditional.content);
}

} // namespace orvane
