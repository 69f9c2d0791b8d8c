#include "Capabilities/ClipboardHistory/Capture/Picture.h"

#include "Capabilities/ClipboardHistory/Capture/PngChunks.h"
#include "Platform/TimedBuffer.h"

#include <QImageReader>

#include <chrono>

namespace orvane::Picture {

namespace {

/// The memory that a decoded picture may take up.
constexpr int largestMegabytes = 512;
/// The time that reading one may take.
constexpr std::chrono::seconds longestWork{10};

/// Limits what it allocates, and its time.
class Reader {
public:
    Reader(const QByteArray& bytes, const IsOver& isOver)
        : m_source(PngChunks::ofPixels(bytes), isOver), m_reader(&m_source, QByteArrayLiteral("png"))
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
    if (!PngChunks::isPng(bytes))
        return std::nullopt;
    const QImage image = Reader(bytes, isOver).read();
    // A decoder that was cut off may still return what it had.
    return image.isNull() || isOver() ? std::nullopt : std::optional(image);
}

bool isReadable(const QByteArray& bytes)
{
    return PngChunks::isPng(bytes) && Reader(bytes, defaultEnd()).size().isValid();
}

} // namespace orvane::Picture
