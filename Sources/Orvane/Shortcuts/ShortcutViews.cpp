#include "Orvane/Shortcuts/ShortcutViews.h"

#include "Orvane/Shortcuts/OrvaChipButtonView.h"
#include "Orvane/Shortcuts/OrvaPopoverView.h"
#include "Orvane/Shortcuts/OrvaWrapView.h"

namespace orvane {

QWidget* makeOrvaWidget(const OrvaWrap& wrap)
{
    return new OrvaWrapView(wrap);
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
