#include "Capabilities/ClipboardHistory/Capture/PasteboardSnapshot.h"

namespace orvane::PasteboardSnapshot {

namespace {

QStringList paths(const QList<QUrl>& urls)
{
    QStringList result;
    for (const QUrl& url : urls)
        result.append(url.adjusted(QUrl::StripTrailingSlash).path(QUrl::FullyDecoded));
    return result;
}

std::optional<CapturedContent> words(const PasteboardReading& pasteboard)
{
    if (const auto url = pasteboard.urlString()) {
        const QString trimmed = url->trimmed();
        if (!trimmed.isEmpty())
            return capturedContent::URL{trimmed};
    }
    const auto text = pasteboard.plainString();
    if (text && !text->trimmed().isEmpty())
        return capturedContent::Text{*text};
    return std::nullopt;
}

} // namespace

std::optional<CapturedContent> classify(const PasteboardReading& pasteboard, bool captureFiles,
                                        bool captureImages, bool captureText)
{
    if (captureFiles) {
        const auto urls = pasteboard.fileURLs();
        if (urls && !urls->isEmpty())
            return capturedContent::Files{paths(*urls)};
    }
    if (captureImages) {
        const auto png = pasteboard.pngData();
        if (png && !png->isEmpty())
            return capturedContent::Image{*png};
    }
    return captureText ? words(pasteboard) : std::nullopt;
}

} // namespace orvane::PasteboardSnapshot
