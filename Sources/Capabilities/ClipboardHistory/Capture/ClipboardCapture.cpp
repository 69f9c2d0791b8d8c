#include "Capabilities/ClipboardHistory/Capture/ClipboardCapture.h"

#include "Capabilities/ClipboardHistory/Capture/SensitiveContentFilter.h"
#include "Capabilities/ClipboardHistory/Capture/SystemPasteboardReader.h"
#include "Capabilities/ClipboardHistory/Store/ClipboardStore.h"
#include "Platform/Clock.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

#include <utility>

namespace orvane {

namespace {

std::optional<QString> frontmostIdentifier()
{
    const auto application = platform().sharedWorkspace.frontmostApplication();
    return application ? application->bundleIdentifier : std::nullopt;
}

QString lastComponent(const QString& path)
{
    QStringView rest(path);
    while (rest.size() > 1 && rest.endsWith(u'/'))
        rest.chop(1);
    return rest.size() == 1 ? rest.toString() : rest.sliced(rest.lastIndexOf(u'/') + 1).toString();
}

QString joinedNames(const QStringList& paths)
{
    QStringList names;
    for (const QString& path : paths)
        names.append(lastComponent(path));
    return names.join(QStringLiteral(", "));
}

} // namespace

std::shared_ptr<ClipboardCapture>
ClipboardCapture::begin(std::shared_ptr<const ClipboardHistorySettings> settings,
                        std::shared_ptr<ArchiveQueue> archive, int changeCount,
                        std::function<void()> completion)
{
    std::shared_ptr<ClipboardCapture> capture(
        new ClipboardCapture(std::move(settings), std::move(archive), changeCount, std::move(completion)));
    capture->readTypes();
    return capture;
}

// Source and time are those of the moment when the copy was seen, however long its owner takes to give it.
ClipboardCapture::ClipboardCapture(std::shared_ptr<const ClipboardHistorySettings> settings,
                                   std::shared_ptr<ArchiveQueue> archive, int changeCount,
                                   std::function<void()> completion)
    : m_settings(std::move(settings)),
      m_archive(std::move(archive)),
      m_changeCount(changeCount),
      m_sourceApp(frontmostIdentifier()),
      m_date(ClipItem::dateFrom(platform().clock.date())),
      m_completion(std::move(completion))
{
}

void ClipboardCapture::readTypes()
{
    m_read = platform().generalPasteboard.read({}, [this](auto contents) { takeTypes(std::move(contents)); });
}

void ClipboardCapture::takeTypes(std::optional<PasteboardContents> contents)
{
    if (!contents || contents->changeCount != m_changeCount)
        return finish(std::nullopt);
    const QStringList types = SystemPasteboardReader(*contents).types();
    if (SensitiveContentFilter::shouldSkip(types, m_sourceApp, {}, m_settings->ignoreConcealed.get()))
        return finish(std::nullopt);
    const QStringList wanted = wantedTypes(types);
    if (wanted.isEmpty())
        return finish(std::nullopt);
    m_read = platform().generalPasteboard.read(wanted, [this](auto data) { takeData(std::move(data)); });
}

QStringList ClipboardCapture::wantedTypes(const QStringList& present) const
{
    QStringList wanted;
    const auto want = [&](QLatin1StringView type) {
        if (present.contains(type))
            wanted.append(type);
    };
    if (m_settings->captureFiles.get())
        want(pasteboardType::fileURL);
    if (m_settings->captureImages.get())
        want(present.contains(pasteboardType::png) ? pasteboardType::png : pasteboardType::tiff);
    if (m_settings->captureText.get()) {
        want(pasteboardType::url);
        want(pasteboardType::string);
    }
    return wanted;
}

void ClipboardCapture::takeData(std::optional<PasteboardContents> contents)
{
    m_read.reset();
    // Another program has copied since its types were looked at.
    if (!contents || contents->changeCount != m_changeCount)
        return finish(std::nullopt);
    if (lacksItsPng(*contents)) {
        auto addTiff = [this, first = *std::move(contents)](auto second) mutable {
            first.data.remove(pasteboardType::png);
            if (second && second->changeCount == m_changeCount)
                first.data.insert(second->data);
            classify(std::move(first));
        };
        m_read = platform().generalPasteboard.read({pasteboardType::tiff}, std::move(addTiff));
        return;
    }
    classify(*std::move(contents));
}

/// Returns true if a PNG was offered but came empty, and a TIFF is offered to ask for instead.
bool ClipboardCapture::lacksItsPng(const PasteboardContents& contents) const
{
    return m_settings->captureImages.get() && contents.fileURLs.isEmpty() &&
           contents.types.contains(pasteboardType::png) && contents.types.contains(pasteboardType::tiff) &&
           contents.dataForType(pasteboardType::png).value_or(QByteArray()).isEmpty();
}

void ClipboardCapture::classify(PasteboardContents contents)
{
    auto judge = [files = m_settings->captureFiles.get(), images = m_settings->captureImages.get(),
                  text = m_settings->captureText.get(),
                  reader = SystemPasteboardReader(std::move(contents))] {
        return PasteboardSnapshot::classify(reader, files, images, text);
    };
    makeItemOf(weak_from_this(), std::move(judge));
}

/// A picture may have to be converted, and a text can be large.
UnownedTask ClipboardCapture::makeItemOf(std::weak_ptr<ClipboardCapture> weak,
                                         std::function<std::optional<CapturedContent>()> classify)
{
    auto content = co_await onPool(classify);
    if (const auto self = weak.lock())
        self->makeItem(std::move(content));
}

void ClipboardCapture::makeItem(std::optional<CapturedContent> content)
{
    if (!content)
        return finish(std::nullopt);
    if (const auto* image = std::get_if<capturedContent::Image>(&*content)) {
        keepWritten(weak_from_this(), m_archive, image->png);
        return;
    }
    ClipItem item{.id = QUuid::createUuid(), .date = m_date, .sourceApp = m_sourceApp};
    if (const auto* text = std::get_if<capturedContent::Text>(&*content)) {
        item.kind = ClipKind::text;
        item.text = text->string;
    } else if (const auto* url = std::get_if<capturedContent::URL>(&*content)) {
        item.kind = ClipKind::url;
        item.text = url->string;
    } else if (const auto* files = std::get_if<capturedContent::Files>(&*content)) {
        item.kind = ClipKind::fileURLs;
        item.filePaths = files->paths;
        item.text = joinedNames(files->paths);
    }
    if (item.textBytes() > ClipboardStore::largestText)
        return finish(std::nullopt);
    finish(std::move(item));
}

UnownedTask ClipboardCapture::keepWritten(std::weak_ptr<ClipboardCapture> weak,
                                          std::shared_ptr<ArchiveQueue> archive, QByteArray png)
{
    auto image = co_await archive->writeImage(std::move(png));
    if (const auto self = weak.lock())
        self->finishImage(std::move(image));
}

void ClipboardCapture::finishImage(std::unique_ptr<UnlistedImage> image)
{
    if (!image)
        return finish(std::nullopt);
    m_image = std::move(image);
    finish(ClipItem{.id = QUuid::createUuid(),
                    .kind = ClipKind::image,
                    .imageFileName = m_image->fileName(),
                    .date = m_date,
                    .sourceApp = m_sourceApp});
}

void ClipboardCapture::keepImage()
{
    if (m_image)
        m_image->keep();
}

void ClipboardCapture::finish(std::optional<ClipItem> item)
{
    m_read.reset();
    m_item = std::move(item);
    m_isComplete = true;
    const auto completion = std::exchange(m_completion, {});
    completion();
}

} // namespace orvane
