#include "CapabilityClipboardHistory/HistoryViewModel.h"

#include "CapabilityClipboardHistory/ClipboardStore.h"

namespace orvane {

QList<ClipItem> HistoryViewModel::filtered() const
{
    return ClipboardStore{.items = items.get()}.search(query.get());
}

} // namespace orvane
