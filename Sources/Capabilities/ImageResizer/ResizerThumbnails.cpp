#include "Capabilities/ImageResizer/ResizerThumbnails.h"

#include "Platform/Platform.h"
#include "Platform/Thumbnails.h"

namespace orvane {

namespace {

QImage imageOf(const std::optional<Pictures::Pixels>& pixels)
{
    if (!pixels)
        return {};
    // A copy, as the bytes end with the pixels.
    return QImage(reinterpret_cast<const uchar*>(pixels->bytes.constData()), pixels->size.width,
                  pixels->size.height, pixels->size.width * 4, QImage::Format_RGBA8888_Premultiplied)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

std::shared_ptr<ResizerThumbnails> ResizerThumbnails::make(const std::shared_ptr<ResizerModel>& model,
                                                           int sideInPixels)
{
    const std::shared_ptr<ResizerThumbnails> made(new ResizerThumbnails(model, sideInPixels));
    auto* const self = made.get();
    made->m_cancellables.push_back(
        model->files.subscribeToChanges([self](const QList<QUrl>& files) { self->dropOthers(files); }));
    made->m_cancellables.push_back(model->isWorking.subscribeToChanges([self](bool) { self->fetchNext(); }));
    return made;
}

ResizerThumbnails::~ResizerThumbnails()
{
    m_stop.request_stop();
}

QImage ResizerThumbnails::image(const QUrl& url)
{
    const auto known = m_images.constFind(url);
    if (known != m_images.constEnd())
        return *known;
    m_images.insert(url, {});
    m_waiting.append(url);
    fetchNext();
    return {};
}

void ResizerThumbnails::dropOthers(const QList<QUrl>& files)
{
    const QSet<QUrl> wanted(files.begin(), files.end());
    m_images.removeIf([&wanted](const auto& entry) { return !wanted.contains(entry.key()); });
    m_waiting.removeIf([&wanted](const QUrl& url) { return !wanted.contains(url); });
}

void ResizerThumbnails::fetchNext()
{
    if (m_isFetching || m_waiting.isEmpty() || m_model->isWorking.get())
        return;
    m_isFetching = true;
    fetch(weak_from_this(), m_waiting.takeFirst(), m_side, m_stop.get_token());
}

UnownedTask ResizerThumbnails::fetch(std::weak_ptr<ResizerThumbnails> weak, QUrl url, int side,
                                     std::stop_token stop)
{
    auto get = [&thumbnails = platform().thumbnails, path = url.toLocalFile(), side, stop] {
        return imageOf(thumbnails.thumbnail(path, {side, side}, stop));
    };
    const QImage image = co_await onPool(get);
    if (const auto self = weak.lock())
        self->take(url, image);
}

void ResizerThumbnails::take(const QUrl& url, const QImage& image)
{
    m_isFetching = false;
    const auto wanted = m_images.find(url);
    if (wanted != m_images.end() && !image.isNull()) {
        *wanted = image;
        arrived.set(url);
    }
    fetchNext();
}

} // namespace orvane
