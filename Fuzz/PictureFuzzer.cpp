// Bytes that claim to be a picture are refused, or become one within the bounds of memory.
#include "Capabilities/ClipboardHistory/Capture/Picture.h"
#include "Capabilities/ClipboardHistory/Capture/PngChunks.h"
#include "Require.h"

#include <cstdint>

using namespace orvane;
using orvane::fuzz::require;

namespace {

constexpr qsizetype signatureSize = 8;

void checkChunks(const QByteArray& bytes)
{
    const QByteArray pixels = PngChunks::ofPixels(bytes);
    require(pixels.size() <= bytes.size() + signatureSize);
    require(PngChunks::ofPixels(pixels) == pixels);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkChunks(bytes);
    const auto image = Picture::image(bytes);
    const bool isReadable = Picture::isReadable(bytes);
    require(!isReadable || PngChunks::isPng(bytes));
    require(!image || isReadable);
    return 0;
}
