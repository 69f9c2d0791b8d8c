// Bytes are either refused with a reason or decoded to values that last: their text decodes to equal ones.
#include "PlatformLinux/Defaults/DefaultsCodec.h"

#include <cstdint>
#include <cstdlib>

using namespace orvane;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto decoded = defaultscodec::decode(text);
    if (!decoded.values) {
        require(!decoded.problem.isEmpty());
        return 0;
    }
    const auto encoded = defaultscodec::encode(*decoded.values);
    require(encoded.has_value());
    const auto again = defaultscodec::decode(*encoded);
    require(again.values.has_value());
    require(again.values->keys() == decoded.values->keys());
    for (auto it = decoded.values->cbegin(); it != decoded.values->cend(); ++it)
        require(defaultscodec::identical(it.value(), again.values->value(it.key())));
    require(defaultscodec::encode(*again.values) == encoded);
    return 0;
}
