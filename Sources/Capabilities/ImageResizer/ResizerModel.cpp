#include "Capabilities/ImageResizer/ResizerModel.h"

#include "Platform/Platform.h"

namespace orvane {

ResizerModel::~ResizerModel()
{
    m_stop.request_stop();
}

void ResizerModel::add(const QList<QUrl>& urls)
{
    const auto& extensions = ImageResizeEngine::supportedExtensions();
    QList<QUrl> all = files.get();
    QSet<QUrl> known(all.begin(), all.end());
    for (const QUrl& url : urls) {
        if (!url.isLocalFile() || !extensions.contains(ImageResizeEngine::lowerCasedExtension(url.path())) ||
            known.contains(url))
            continue;
        known.insert(url);
        all.append(url);
    }
    if (all.size() != files.get().size())
        files.set(all);
}

void ResizerModel::remove(const QUrl& url)
{
    QList<QUrl> rest = files.get();
    rest.removeAll(url);
    files.set(rest);
}

void ResizerModel::clear()
{
    files.set({});
}

void ResizerModel::resizeAll()
{
    if (files.get().isEmpty() || isWorking.get())
        return;
    m_stop = {};
    const auto total = static_cast<int>(files.get().size());
    progress.set({0, total});
    status.set(QStringLiteral("Resizing %1…").arg(total));
    isWorking.set(true);
    work(weak_from_this(), files.get(), m_settings->options(), m_stop.get_token());
}

void ResizerModel::cancel()
{
    m_stop.request_stop();
}

UnownedTask ResizerModel::work(std::weak_ptr<ResizerModel> weak, QList<QUrl> batch,
                               ImageResizeEngine::Options options, std::stop_token stop)
{
    Pictures& pictures = platform().pictures;
    const auto total = static_cast<int>(batch.size());
    int done = 0;
    int resized = 0;
    for (const QUrl& url : batch) {
        // One file at a time, so that quitting waits for one and not for all of them.
        auto one = [&pictures, path = url.toLocalFile(), options, stop] {
            return ImageResizeEngine::resize(pictures, path, options, stop).has_value();
        };
        const bool isResized = co_await onPool(one);
        const auto self = weak.lock();
        if (!self)
            co_return;
        resized += isResized ? 1 : 0;
        self->progress.set({++done, total});
        if (stop.stop_requested())
            break;
    }
    if (const auto self = weak.lock())
        self->finish(resized, total);
}

void ResizerModel::finish(int resized, int total)
{
    status.set(QStringLiteral("Resized %1 of %2 image%3 — saved next to the originals.")
                   .arg(resized)
                   .arg(total)
                   .arg(total == 1 ? QString() : QStringLiteral("s")));
    isWorking.set(false);
}

} // namespace orvane
