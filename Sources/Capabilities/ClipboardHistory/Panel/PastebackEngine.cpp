#include "Capabilities/ClipboardHistory/Panel/PastebackEngine.h"

#include "Capabilities/ClipboardHistory/Archive/PlainFile.h"
#include "Capabilities/ClipboardHistory/Capture/AnyPicture.h"
#include "OrvaneCore/Input/SyntheticEvent.h"
#include "Platform/Platform.h"

namespace orvane::PastebackEngine {

namespace {

constexpr std::int64_t vKey = 9;

void write(Pasteboard& pasteboard, const ClipItem& item, const std::optional<PasteboardImage>& image)
{
    switch (item.kind) {
    case ClipKind::text:
    case ClipKind::url:
        if (item.text)
            pasteboard.setString(*item.text, pasteboardType::string);
        return;
    case ClipKind::fileURLs:
        if (item.filePaths) {
            QList<QUrl> urls;
            for (const QString& path : *item.filePaths)
                urls.append(QUrl::fromLocalFile(path));
            pasteboard.writeObjects(urls);
        }
        return;
    case ClipKind::image:
        if (image)
            pasteboard.writeObjects(*image);
        return;
    }
}

} // namespace

std::optional<PasteboardImage> image(const QString& path)
{
    const auto content = PlainFile::content(path);
    const auto png = content ? AnyPicture::asPng(*content) : std::nullopt;
    return png ? std::optional(PasteboardImage{*png}) : std::nullopt;
}

int place(const ClipItem& item, const std::optional<PasteboardImage>& image)
{
    Pasteboard& pasteboard = platform().generalPasteboard;
    const int changeCount = pasteboard.clearContents();
    write(pasteboard, item, image);
    return changeCount;
}

void synthesizePaste()
{
    SyntheticEvent::postKey(vKey, eventFlag::command);
}

} // namespace orvane::PastebackEngine
