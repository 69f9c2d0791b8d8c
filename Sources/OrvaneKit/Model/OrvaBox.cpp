#include "OrvaneKit/Model/OrvaBox.h"

#include <QBoxLayout>
#include <QWidget>

#include <algorithm>

namespace orvane {

namespace {

bool fills(const OrvaBoxPart& part, const QWidget& widget, Qt::Orientation along)
{
    switch (part.fill) {
    case OrvaBoxPart::Fill::none:
        return false;
    case OrvaBoxPart::Fill::all:
        return true;
    case OrvaBoxPart::Fill::asItWants:
        return widget.sizePolicy().expandingDirections() & along;
    }
    Q_UNREACHABLE();
}

} // namespace

QList<AnyView> OrvaBox::children() const
{
    QList<AnyView> views;
    for (const OrvaBoxPart& part : content) {
        if (part.view)
            views.append(part.view);
    }
    return views;
}

QWidget* makeOrvaWidget(const OrvaBox& box)
{
    const bool isLine = box.axis == OrvaBox::Axis::line;
    auto* widget = new QWidget;
    auto* layout = new QBoxLayout(isLine ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, widget);
    const QMargins& margins = box.margins;
    layout->setContentsMargins(
        widget->isRightToLeft() ? QMargins(margins.right(), margins.top(), margins.left(), margins.bottom())
                                : margins);
    layout->setSpacing(static_cast<int>(box.spacing));
    bool filled = false;
    int highest = 0;
    for (const OrvaBoxPart& part : box.content) {
        if (part.room > 0)
            layout->addSpacing(part.room);
        if (part.weight > 0)
            layout->addStretch(part.weight);
        filled = filled || part.weight > 0;
        if (QWidget* child = part.view.makeWidget()) {
            const bool fill = fills(part, *child, isLine ? Qt::Horizontal : Qt::Vertical);
            layout->addWidget(child, fill ? 1 : 0, part.alignment);
            filled = filled || fill;
            highest = std::max(highest, child->sizeHint().height());
        }
    }
    if (box.endsFree && !filled)
        layout->addStretch(1);
    if (box.keepsHeight)
        widget->setMinimumHeight(highest + box.margins.top() + box.margins.bottom());
    return widget;
}

} // namespace orvane
