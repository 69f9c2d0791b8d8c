#include "Capabilities/ImageResizer/ResizerFileRowView.h"

#include "Capabilities/ImageResizer/ImageResizerText.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QAbstractListModel>
#include <QIcon>
#include <QKeyEvent>
#include <QPixmap>

#include <algorithm>

namespace orvane {

namespace {

constexpr int itemWidth = 70;
constexpr int thumbnailSide = 52;
constexpr int roomBetween = 4;

QIcon iconOfPictures()
{
    return QIcon::fromTheme(QStringLiteral("image-x-generic"), QIcon(QStringLiteral(":/symbols/photo.svg")));
}

} // namespace

/// The files as the list shows them.
class ResizerFileRowView::Files final : public QAbstractListModel {
public:
    Files(const std::shared_ptr<ResizerModel>& model, double scale, QObject* parent)
        : QAbstractListModel(parent),
          m_scale(scale),
          m_thumbnails(ResizerThumbnails::make(model, static_cast<int>(thumbnailSide * scale)))
    {
        m_cancellables.push_back(model->files.subscribe([this](const QList<QUrl>& files) { show(files); }));
        m_cancellables.push_back(m_thumbnails->arrived.subscribeToChanges([this](const QUrl& url) {
            const QModelIndex place = index(static_cast<int>(m_urls.indexOf(url)));
            Q_EMIT dataChanged(place, place, {Qt::DecorationRole});
        }));
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_urls.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex& place, int role) const override
    {
        if (!place.isValid() || place.row() >= m_urls.size())
            return {};
        const QUrl& url = m_urls.at(place.row());
        switch (role) {
        case Qt::DisplayRole:
            return url.fileName();
        case Qt::ToolTipRole:
            return ImageResizerText::tr("Remove %1").arg(url.fileName());
        case Qt::DecorationRole:
            return picture(url);
        default:
            return {};
        }
    }

    [[nodiscard]] QUrl url(int row) const { return m_urls.value(row); }

private:
    [[nodiscard]] QVariant picture(const QUrl& url) const
    {
        const QImage image = m_thumbnails->image(url);
        if (image.isNull())
            return iconOfPictures();
        QPixmap pixmap = QPixmap::fromImage(image);
        pixmap.setDevicePixelRatio(m_scale);
        return QIcon(pixmap);
    }

    void show(const QList<QUrl>& files)
    {
        const bool isLonger =
            files.size() > m_urls.size() && std::equal(m_urls.begin(), m_urls.end(), files.begin());
        const auto gone =
            std::mismatch(m_urls.begin(), m_urls.end(), files.begin(), files.end()).first - m_urls.begin();
        const bool isOneLess = files.size() + 1 == m_urls.size() &&
                               std::equal(files.begin() + gone, files.end(), m_urls.begin() + gone + 1);
        if (isLonger) {
            beginInsertRows({}, static_cast<int>(m_urls.size()), static_cast<int>(files.size()) - 1);
            m_urls = files;
            endInsertRows();
        } else if (isOneLess) {
            beginRemoveRows({}, static_cast<int>(gone), static_cast<int>(gone));
            m_urls = files;
            endRemoveRows();
        } else {
            beginResetModel();
            m_urls = files;
            endResetModel();
        }
    }

    double m_scale;
    QList<QUrl> m_urls;
    std::shared_ptr<ResizerThumbnails> m_thumbnails;
    Cancellables m_cancellables;
};

ResizerFileRowView::ResizerFileRowView(std::shared_ptr<ResizerModel> model)
    : m_model(std::move(model)), m_files(new Files(m_model, devicePixelRatioF(), this))
{
    setAccessibleName(ImageResizerText::tr("Images to resize"));
    setModel(m_files);
    setFrameShape(QFrame::NoFrame);
    setViewMode(QListView::IconMode);
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setMovement(QListView::Static);
    setDragDropMode(QAbstractItemView::NoDragDrop);
    setUniformItemSizes(true);
    setIconSize({thumbnailSide, thumbnailSide});
    setTextElideMode(Qt::ElideMiddle);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    setUp();
    connect(this, &QListView::clicked, this, &ResizerFileRowView::remove);
}

void ResizerFileRowView::setUp()
{
    setFont(orvaFont(OrvaFont::caption));
    setGridSize({itemWidth + roomBetween, thumbnailSide + fontMetrics().height() + 12});
}

QSize ResizerFileRowView::sizeHint() const
{
    return {3 * itemWidth, gridSize().height() + 18}; // 18 for the scroll bar
}

void ResizerFileRowView::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange)
        setUp();
}

void ResizerFileRowView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        remove(currentIndex());
    else
        QListView::keyPressEvent(event);
}

void ResizerFileRowView::remove(const QModelIndex& index)
{
    if (index.isValid())
        m_model->remove(m_files->url(index.row()));
}

} // namespace orvane
