// Small pictures of the dropped files. Main thread; they are made on the pool, one at a time, and only while
// no batch runs.
#pragma once

#include "Capabilities/ImageResizer/ResizerModel.h"

#include <QHash>
#include <QImage>
#include <QSet>

namespace orvane {

class ResizerThumbnails : public std::enable_shared_from_this<ResizerThumbnails> {
public:
    /// `sideInPixels` is that of the square into which pictures are fitted.
    [[nodiscard]] static std::shared_ptr<ResizerThumbnails> make(const std::shared_ptr<ResizerModel>& model,
                                                                 int sideInPixels);
    ~ResizerThumbnails();
    ResizerThumbnails(const ResizerThumbnails&) = delete;
    ResizerThumbnails& operator=(const ResizerThumbnails&) = delete;

    /// Returns the picture, or a null one where there is none. The first question has it fetched.
    [[nodiscard]] QImage image(const QUrl& url);

    /// The last picture that arrived.
    Observable<QUrl> arrived;

private:
    ResizerThumbnails(std::shared_ptr<ResizerModel> model, int side) : m_model(std::move(model)), m_side(side)
    {
    }

    void fetchNext();
    void dropOthers(const QList<QUrl>& files);
    static UnownedTask fetch(std::weak_ptr<ResizerThumbnails> weak, QUrl url, int side, std::stop_token stop);
    void take(const QUrl& url, const QImage& image);

    std::shared_ptr<ResizerModel> m_model;
    int m_side;
    QHash<QUrl, QImage> m_images; // null for those that can't be had and those that are waited for
    QList<QUrl> m_waiting;
    bool m_isFetching = false;
    std::stop_source m_stop;
    Cancellables m_cancellables;
};

} // namespace orvane
