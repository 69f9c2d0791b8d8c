#include "Capabilities/ImageResizer/ResizerModel.h"

#include "Capabilities/ImageResizer/ImageResizerText.h"
#include "Platform/Platform.h"

namespace orvane {

/// What the lanes of a batch share. The main thread's, but for what never changes.
struct ResizerModel::Batch {
    const QList<QUrl> files;
    const ImageResizeEngine::Options options;
    const std::stop_token stop;
    int next = 0;
    int done = 0;
    int resized = 0;
    int lanes = ResizerModel::lanes;
};

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
    status.set(ImageResizerText::tr("Resizing %1…").arg(total));
    isWorking.set(true);
    const auto batch = std::make_shared<Batch>(Batch{files.get(), m_settings->options(), m_stop.get_token()});
    for (int lane = 0; lane < lanes; ++lane)
        work(weak_from_this(), batch);
}

void ResizerModel::cancel()
{
    m_stop.request_stop();
}

UnownedTask ResizerModel::work(std::weak_ptr<ResizerModel> weak, std::shared_ptr<Batch> batch)
{
    Pictures& pictures = platform().pictures;
    const auto total = static_cast<int>(batch->files.size());
    while (batch->next < total && !batch->stop.stop_requested()) {
        // One file for each visit to the pool, so that quitting doesn't wait for all of them.
        auto one = [&pictures, path = batch->files.at(batch->next++).toLocalFile(), batch] {
            return ImageResizeEngine::resize(pictures, path, batch->options, batch->stop).has_value();
        };
        const bool isResized = co_await onPool(one);
        const auto self = weak.lock();
        if (!self)
            co_return;
        batch->resized += isResized ? 1 : 0;
        self->progress.set({++batch->done, total});
    }
    const auto self = weak.lock();
    if (self && --batch->lanes == 0)
        self->finish(batch->resized, total);
}

void ResizerModel::finish(int resized, int total)
{
    const QString text =
        total == 1
            ? ImageResizerText::tr("Resized %1 of %n image — saved next to the originals.", nullptr, total)
            : ImageResizerText::tr("Resized %1 of %n images — saved next to the originals.", nullptr, total);
    status.set(text.arg(resized));
    isWorking.set(false);
}

} // namespace orvane
