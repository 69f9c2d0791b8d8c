#include "PlatformLinux/Pasteboard/PictureConversion.h"

#include "Platform/TimedBuffer.h"

#include <QImage>
#include <QImageReader>

#include <string_view>

namespace orvane {

namespace {

/// The memory that a decoded picture may take.
constexpr int largestMegabytes = 512;

/// A few bytes of a JPEG can be a whole pass over the picture. Its reader takes them in any number, that of
/// BMP doesn't.
constexpr qint64 mostOfJpegAtOnce = 256;

TimedBuffer sourceOf(const ForeignPicture& picture, const std::function<bool()>& isOver)
{
    if (std::string_view(picture.format) == "jpeg")
        return TimedBuffer(picture.bytes, isOver, mostOfJpegAtOnce);
    return TimedBuffer(picture.bytes, isOver);
}

} // namespace

std::optional<QByteArray> convertToPng(const ForeignPicture& picture, const std::function<bool()>& isOver)
{
    TimedBuffer source = sourceOf(picture, isOver);
    QImageReader reader(&source, picture.format);
    reader.setAutoDetectImageFormat(false);
    reader.setDecideFormatFromContent(false);
    const QSize size = reader.size();
    if (!size.isValid() || qint64{size.width()} * size.height() * 4 > qint64{largestMegabytes} << 20)
        return std::nullopt;
    // The toolkit's own limit is lower, and one for the whole process.
    if (QImageReader::allocationLimit() < largestMegabytes)
        QImageReader::setAllocationLimit(largestMegabytes);
    const QImage image = reader.read();
    // A decoder that was cut off may still return what it had.
    if (image.isNull() || isOver())
        return std::nullopt;
    TimedBuffer target(isOver);
    return image.save(&target, "PNG") && !isOver() ? std::optional(target.bytes()) : std::nullopt;
}

} // namespace orvane
