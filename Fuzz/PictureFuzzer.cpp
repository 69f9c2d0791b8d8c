// Bytes that claim to be a picture are refused, or become one within the bounds of memory; a converted one
// can be read again.
#include "Capabilities/ClipboardHistory/Capture/Picture.h"
#include "Capabilities/ClipboardHistory/Capture/PngChunks.h"
#include "PlatformLinux/Pasteboard/PictureConversion.h"
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

void checkConversion(const QByteArray& bytes, const char* format)
{
    const auto converted = convertToPng({bytes, format}, Picture::defaultEnd());
    require(!converted || Picture::image(*converted).has_value());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkChunks(bytes);
    const auto image = Picture::image(bytes);
    const auto png = Picture::png(bytes);
    require(!png || PngChunks::isPng(*png));
    require(!image || png.has_value());
    checkConversion(bytes, "bmp");
    checkConversion(bytes, "jpeg");
    return 0;
}
