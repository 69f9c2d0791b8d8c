#include "Capabilities/ClipboardHistory/Capture/Picture.h"

#include "Capabilities/ClipboardHistory/Capture/PngChunks.h"
#include "Platform/TimedBuffer.h"

#include <QImageReader>

#include <chrono>

namespace orvane::Picture {

namespace {

/// The memory that a decoded picture may take up.
constexpr int largestMegabytes = 512;
/// The time that reading or converting one may take.
constexpr std::chrono::seconds longestWork{10};

/// Returns the reader's name of the format. Other formats aren't tried: some of them are programs rather than
/// pictures.
QByteArray format(const QByteArray& bytes)
{
    if (PngChunks::isPng(bytes))
        return QByteArrayLiteral("png");
    if (bytes.startsWith("II") || bytes.startsWith("MM"))
        return QByteArrayLiteral("tiff");
    return {};
}

/// Limits what it allocates, and its time.
class Reader {
public:
    Reader(const QByteArray& bytes, const IsOver& isOver)
        : m_source(PngChunks::isPng(bytes) ? PngChunks::ofPixels(bytes) : bytes, isOver),
          m_reader(&m_source, format(bytes))
    {
        m_reader.setAutoDetectImageFormat(false);
        // The toolkit's own limit is lower, and one for the whole process.
        if (QImageReader::allocationLimit() < largestMegabytes)
            QImageReader::setAllocationLimit(largestMegabytes);
    }

    QSize size() { return m_reader.size(); }
    QImage read() { return m_reader.read(); }

private:
    TimedBuffer m_source;
    QImageReader m_reader;
};

} // namespace

IsOver defaultEnd()
{
    return [end = std::chrono::steady_clock::now() + longestWork] {
        return std::chrono::steady_clock::now() >= end;
    };
}

std::optional<QImage> image(const QByteArray& bytes, const IsOver& isOver)
{
    const QImage image = Reader(bytes, isOver).read();
    // A decoder that was cut off may still return what it had.
    return image.isNull() || isOver() ? std::nullopt : std::optional(image);
}

std::optional<QByteArray> png(const QByteArray& bytes, const IsOver& isOver)
{
    if (PngChunks::isPng(bytes))
        return Reader(bytes, isOver).size().isValid() ? std::optional(bytes) : std::nullopt;
    const auto decoded = image(bytes, isOver);
    TimedBuffer target(isOver);
    const bool isWritten = decoded && decoded->save(&target, "PNG") && !isOver();
    return isWritten ? std::optional(target.bytes()) : std::nullopt;
}

} // namespace orvane::Picture
