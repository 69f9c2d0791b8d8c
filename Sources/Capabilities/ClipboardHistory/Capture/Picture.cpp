#include "Capabilities/ClipboardHistory/Capture/Picture.h"

#include "Capabilities/ClipboardHistory/Capture/PngChunks.h"

#include <QBuffer>
#include <QImageReader>

namespace orvane::Picture {

namespace {

/// What a picture may take up decoded.
constexpr int largestMegabytes = 512;

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

/// Limits what it allocates.
class Reader {
public:
    explicit Reader(const QByteArray& bytes) : m_reader(&m_buffer, format(bytes))
    {
        m_buffer.setData(PngChunks::isPng(bytes) ? PngChunks::ofPixels(bytes) : bytes);
        m_buffer.open(QIODevice::ReadOnly);
        m_reader.setAutoDetectImageFormat(false);
        // The toolkit's own limit is lower, and one for the whole process.
        if (QImageReader::allocationLimit() < largestMegabytes)
            QImageReader::setAllocationLimit(largestMegabytes);
    }

    QSize size() { return m_reader.size(); }
    QImage read() { return m_reader.read(); }

private:
    QBuffer m_buffer;
    QImageReader m_reader;
};

} // namespace

std::optional<QImage> image(const QByteArray& bytes)
{
    const QImage image = Reader(bytes).read();
    return image.isNull() ? std::nullopt : std::optional(image);
}

std::optional<QByteArray> png(const QByteArray& bytes)
{
    if (PngChunks::isPng(bytes))
        return Reader(bytes).size().isValid() ? std::optional(bytes) : std::nullopt;
    const auto decoded = image(bytes);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const bool isWritten = decoded && decoded->save(&buffer, "PNG");
    return isWritten ? std::optional(buffer.data()) : std::nullopt;
}

} // namespace orvane::Picture
