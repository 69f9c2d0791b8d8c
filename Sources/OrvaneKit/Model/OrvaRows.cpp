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

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace orvane {

namespace {

constexpr int rowH = static_cast<int>(Orva::rowH);
constexpr int rowV = static_cast<int>(Orva::rowV);
constexpr int ring = orvaRingMargin;
constexpr int labelGap = 2;
constexpr int controlGap = 16;

/// Margins of a row whose controls have their own room for the focus ring.
constexpr QMargins controlMargins(rowH, rowV - ring, rowH - ring, rowV - ring);

QWidget* makeLabel(const Live<QString>& title, const std::optional<Live<QString>>& caption, int vertical = 0)
{
    auto* widget = new QWidget;
    auto* lines = new QVBoxLayout(widget);
    lines->setContentsMargins(0, vertical, 0, vertical);
    lines->setSpacing(labelGap);
    lines->addWidget(new OrvaTextView(title, OrvaFont::body, OrvaColor::primary));
    if (caption)
        lines->addWidget(new OrvaTextView(*caption, OrvaFont::caption, OrvaColor::secondary));
    return widget;
}

QWidget* makeControlRow(QWidget* label, QWidget* control)
{
    auto* widget = new QWidget;
    auto* line = new QHBoxLayout(widget);
    line->setContentsMargins(controlMargins);
    line->setSpacing(controlGap);
    line->addWidget(label, 1);
    line->addWidget(control, 0, Qt::AlignVCenter);
    return widget;
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
    return makeLabel(label.title, label.caption);
}

QWidget* makeOrvaWidget(const OrvaToggleRow& row)
{
    return makeControlRow(makeLabel(row.title, row.caption, ring),
                          new OrvaSwitchView(row.isOn, row.title, row.caption));
}

QWidget* makeOrvaWidget(const OrvaSliderRow& row)
{
    auto* widget = new QWidget;
    auto* lines = new QVBoxLayout(widget);
    lines->setContentsMargins(rowH - ring, rowV, rowH - ring, rowV - ring);
    lines->setSpacing(4);
    auto* head = new QHBoxLayout;
    head->setContentsMargins(ring, 0, ring, 0);
    head->setSpacing(controlGap);
    head->addWidget(new OrvaTextView(row.title, OrvaFont::body, OrvaColor::primary), 1);
    head->addWidget(new OrvaTextView(row.detail, OrvaFont::caption, OrvaColor::secondary,
                                     OrvaTextView::Wrapping::singleLine));
    lines->addLayout(head);
    lines->addWidget(
        new OrvaSliderView(row.value, row.range.lower, row.range.upper, row.step, row.title, row.detail));
    return widget;
}

QWidget* makeOrvaWidget(const OrvaStepperRow& row)
{
    return makeControlRow(
        makeLabel(row.title, std::nullopt, ring),
        new OrvaStepperView(row.value, row.range.lower, row.range.upper, row.step, row.title));
}

QWidget* makeOrvaWidget(const OrvaPickerRow& row)
{
    return makeControlRow(makeLabel(row.title, std::nullopt, ring),
                          new OrvaPickerView(row.selection, row.content, row.title));
}

QWidget* makeOrvaWidget(const OrvaValueRow& row)
{
    auto* value = new OrvaTextView(row.value, OrvaFont::body, OrvaColor::secondary);
    value->setAlignment(Qt::AlignRight);
    QWidget* widget = makeControlRow(makeLabel(row.title, row.caption), value);
    widget->layout()->setContentsMargins(rowH, rowV, rowH, rowV);
    return widget;
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
