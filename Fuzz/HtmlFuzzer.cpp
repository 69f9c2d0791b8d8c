// All bytes up to this size are HTML, and give a text whose size is in proportion, of whole characters and
// without control characters.
#include "Capabilities/PlainPaste/Html/HtmlText.h"
#include "PlainText.h"

#include <cstdint>

using namespace orvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView document(data, static_cast<qsizetype>(size));
    if (const auto text = HtmlText::decode(document)) {
        fuzz::requirePlain(*text);
        // The longest mark is that of an item with a number of its own, deep in lists.
        fuzz::require(text->size() <= 8 * document.size());
    }
    return 0;
}
