#include "Capabilities/ClipboardHistory/Panel/HistoryViewModel.h"

#include "Capabilities/ClipboardHistory/Store/ClipboardStore.h"

namespace orvane {

QList<ClipItem> HistoryViewModel::filtered() const
{
    return ClipboardStore{.items = items.get()}.search(query.get());
}

} // namespace orvane
