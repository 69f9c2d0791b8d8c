// Bytes are either no history or a history that lasts: what is written from it reads back as the same.
#include "Capabilities/ClipboardHistory/Archive/HistoryCodec.h"

#include <cstdint>
#include <cstdlib>

using namespace orvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray json(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto items = HistoryCodec::decode(json);
    if (!items)
        return 0;
    // Half a surrogate pair doesn't survive the first writing, so the second one is compared.
    const QByteArray written = HistoryCodec::encode(*items);
    const auto again = HistoryCodec::decode(written);
    if (!again || again->size() != items->size() || HistoryCodec::encode(*again) != written)
        std::abort();
    return 0;
}
