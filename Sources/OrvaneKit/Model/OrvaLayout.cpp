#include "OrvaneKit/Model/OrvaLayout.h"

#include "OrvaneKit/Controls/OrvaChipButtonView.h"
#include "OrvaneKit/Controls/OrvaTextButtonView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Lists/OrvaWrapView.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Panels/OrvaPopoverView.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace orvane {

QWidget* makeOrvaWidget(const OrvaText& text)
{
    return new OrvaTextView(text.text, text.font, text.color);
}

QWidget* makeOrvaWidget(const OrvaInset& inset)
{
    auto* widget = new QWidget;
    auto* line = new QHBoxLayout(widget);
    line->setContentsMargins(static_cast<int>(inset.side), 0, 0, 0);
    if (QWidget* content = inset.content.makeWidget())
        line->addWidget(content);
    return widget;
}

QWidget* makeOrvaWidget(const OrvaSymbolMark& mark)
{
    return new OrvaSymbolView(mark.systemImage, mark.side, mark.color);
}

QWidget* makeOrvaWidget(const OrvaHStack& stack)
{
    auto* widget = new QWidget;
    auto* line = new QHBoxLayout(widget);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(static_cast<int>(stack.spacing));
    bool filled = false;
    for (const AnyView& view : stack.content) {
        QWidget* child = view.makeWidget();
        if (!child)
            continue;
        const bool fills = view.as<OrvaSpacer>() != nullptr;
        line->addWidget(child, fills ? 1 : 0, Qt::AlignVCenter);
        filled = filled || fills;
    }
    if (!filled)
        line->addStretch(1);
    return widget;
}

QWidget* makeOrvaWidget(const OrvaVStack& stack)
{
    auto* widget = new QWidget;
    auto* lines = new QVBoxLayout(widget);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(static_cast<int>(stack.spacing));
    for (const AnyView& view : stack.content) {
        QWidget* child = view.makeWidget();
        if (!child)
            continue;
        const bool takesItsOwn = child->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed;
        lines->addWidget(child, 0, takesItsOwn ? Qt::AlignLeft : Qt::Alignment());
    }
    return widget;
}

QWidget* makeOrvaWidget(const OrvaWrap& wrap)
{
    return new OrvaWrapView(wrap);
}

QWidget* makeOrvaWidget(const OrvaTextButton& button)
{
    return new OrvaTextButtonView(button);
}

QWidget* makeOrvaWidget(const OrvaChipButton& button)
{
    return new OrvaChipButtonView(button);
}

QWidget* makeOrvaWidget(const OrvaPopover& popover)
{
    return new OrvaPopoverAnchorView(popover);
}

} // namespace orvane
