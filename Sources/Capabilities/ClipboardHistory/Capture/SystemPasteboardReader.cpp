#include "Capabilities/ClipboardHistory/Capture/SystemPasteboardReader.h"

#include "Capabilities/ClipboardHistory/Capture/AnyPicture.h"

namespace orvane {

std::optional<QString> SystemPasteboardReader::urlString() const
{
    return m_contents.stringForType(pasteboardType::url);
}

std::optional<QString> SystemPasteboardReader::plainString() const
{
    return m_contents.stringForType(pasteboardType::string);
}

std::optional<QByteArray> SystemPasteboardReader::pngData() const
{
    if (auto png = m_contents.dataForType(pasteboardType::png))
        return png;
    const auto tiff = m_contents.dataForType(pasteboardType::tiff);
    return tiff ? AnyPicture::asPng(*tiff) : std::nullopt;
}

std::optional<QList<QUrl>> SystemPasteboardReader::fileURLs() const
{
    return m_contents.fileURLs.isEmpty() ? std::nullopt : std::optional(m_contents.fileURLs);
}

} // namespace orvane
