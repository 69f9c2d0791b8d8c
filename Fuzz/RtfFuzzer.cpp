// Bytes are either no RTF or give a text that is no longer than they are, of whole characters and without
// control characters.
#include "Capabilities/PlainPaste/Rtf/RtfText.h"
#include "PlainText.h"

#include <cstdint>

using namespace orvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView document(data, static_cast<qsizetype>(size));
    if (const auto text = RtfText::decode(document)) {
        fuzz::requirePlain(*text);
        fuzz::require(text->size() <= document.size());
    }
    return 0;
}
