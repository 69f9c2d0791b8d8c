#include "Capabilities/DailyFrame/WallpaperPreviewView.h"

#include "Capabilities/DailyFrame/DailyFrameText.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "Platform/Pictures.h"
#include "Platform/Platform.h"

#include <QPainter>
#include <QPainterPath>

namespace orvane {

namespace {

constexpr int usualWidth = 480; // in points
constexpr double corner = 8;
constexpr int placeholderSide = 36;

QImage imageOf(const std::optional<Pictures::Pixels>& pixels)
{
    if (!pixels)
        return {};
    // A copy, as the bytes end with the pixels.
    return QImage(reinterpret_cast<const uchar*>(pixels->bytes.constData()), pixels->size.width,
                  pixels->size.height, qsizetype{pixels->size.width} * 4,
                  QImage::Format_RGBA8888_Premultiplied)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// Returns the middle of an image, in the proportions of `size`.
QRectF middle(const QSizeF& image, const QSizeF& size)
{
    QRectF part(QPointF(), size.scaled(image, Qt::KeepAspectRatio));
    part.moveCenter(QRectF(QPointF(), image).center());
    return part;
}

} // namespace

WallpaperPreviewView::WallpaperPreviewView(std::shared_ptr<DailyFrameController> controller)
    : m_controller(std::move(controller))
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAccessibleName(DailyFrameText::tr("Wallpaper"));
    m_progress.setRange(0, 0);
    m_progress.setTextVisible(false);
    m_progress.setAccessibleName(DailyFrameText::tr("Loading"));
    m_progress.hide();
    m_cancellables.push_back(m_controller->currentFile.subscribeToChanges(
        [this](const std::optional<QString>&) { fileChanged(); }));
}

WallpaperPreviewView::~WallpaperPreviewView()
{
    m_stop.request_stop();
}

QSize WallpaperPreviewView::sizeHint() const
{
    return {usualWidth, heightForWidth(usualWidth)};
}

int WallpaperPreviewView::heightForWidth(int width) const
{
    return width * 9 / 16; // most displays', and the sources' pictures
}

void WallpaperPreviewView::showEvent(QShowEvent* event)
{
    OrvaThemed<QWidget>::showEvent(event);
    loadIfNeeded();
}

/// A file may have new content under the same name.
void WallpaperPreviewView::fileChanged()
{
    m_path.clear();
    if (isVisible())
        loadIfNeeded();
}

void WallpaperPreviewView::loadIfNeeded()
{
    const QString path = m_controller->currentFile.get().value_or(QString());
    if (path == m_path)
        return;
    m_path = path;
    m_image = {};
    m_progress.setVisible(!path.isEmpty());
    update();
    if (!path.isEmpty())
        load(this, path, static_cast<int>(qMax(width(), usualWidth) * devicePixelRatioF()),
             m_stop.get_token());
}

UnownedTask WallpaperPreviewView::load(QPointer<WallpaperPreviewView> view, QString path, int side,
                                       std::stop_token stop)
{
    auto get = [&pictures = platform().pictures, path, side, stop] {
        return imageOf(pictures.thumbnail(path, {side, side}, stop));
    };
    const QImage image = co_await onPool(get);
    if (view)
        view->take(path, image);
}

void WallpaperPreviewView::take(const QString& path, const QImage& image)
{
    if (path != m_path)
        return;
    m_image = image;
    m_progress.hide();
    update();
}

void WallpaperPreviewView::resizeEvent(QResizeEvent* event)
{
    OrvaThemed<QWidget>::resizeEvent(event);
    const QSize size(width() / 3, m_progress.sizeHint().height());
    m_progress.setGeometry(QRect(rect().center() - QPoint(size.width(), size.height()) / 2, size));
}

void WallpaperPreviewView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    QPainterPath outline;
    outline.addRoundedRect(rect(), corner, corner);
    painter.setClipPath(outline);
    if (!m_image.isNull()) {
        painter.drawImage(rect(), m_image, middle(m_image.size(), size()));
        return;
    }
    painter.fillPath(outline, orvaColor(OrvaColor::controlFill));
    if (!m_progress.isVisible()) {
        QRectF place(0, 0, placeholderSide, placeholderSide);
        place.moveCenter(QRectF(rect()).center());
        paintOrvaSymbol(painter, QStringLiteral("photo"), place, orvaColor(OrvaColor::secondary));
    }
}

QWidget* makeOrvaWidget(const WallpaperPreview& preview)
{
    return new WallpaperPreviewView(preview.controller);
}

} // namespace orvane
