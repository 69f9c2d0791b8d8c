// Any text is either no shortcut or one whose own text reads as the same one.
#include "KeyboardShortcuts/Storage/ShortcutCoding.h"

#include <cstdint>
#include <cstdlib>

using namespace orvane::KeyboardShortcuts;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto shortcut =
        decode(QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (shortcut && decode(encode(*shortcut)) != shortcut)
        std::abort();
    return 0;
}
