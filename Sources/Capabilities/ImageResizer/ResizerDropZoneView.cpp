#include "Capabilities/ImageResizer/ResizerDropZoneView.h"

#include "Capabilities/ImageResizer/ImageResizerText.h"
#include "Capabilities/ImageResizer/ResizerFileRowView.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int leastHeight = 120;
constexpr double corner = 12;
constexpr double symbolSide = 34;
constexpr int gap = 8;

class DropZoneView final : public OrvaThemed<QWidget> {
public:
    explicit DropZoneView(const ResizerDropZone& zone)
        : m_zone(zone), m_row(new ResizerFileRowView(zone.model))
    {
        setMinimumHeight(leastHeight);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        setAccessibleName(invitation());
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(8, 8, 8, 8);
        layout->addWidget(m_row);
        m_cancellables.push_back(zone.model->files.subscribe([this](const QList<QUrl>& files) {
            m_row->setVisible(!files.isEmpty());
            update();
        }));
        m_cancellables.push_back(zone.targeted->subscribeToChanges([this](bool) { update(); }));
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        return {200, std::max(leastHeight, m_row->sizeHint().height() + 16)};
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const bool isTargeted = m_zone.targeted->get();
        const QColor color = orvaColor(isTargeted ? OrvaColor::accent : OrvaColor::secondary);
        QPen pen(color, isTargeted ? 2 : 1.5);
        pen.setDashPattern({5, 4});
        painter.setPen(pen);
        painter.setBrush(faded(color, isTargeted ? 0.12 : 0.05));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), corner, corner);
        if (m_zone.model->files.get().isEmpty())
            paintInvitation(painter, color);
    }

private:
    static QString invitation() { return ImageResizerText::tr("Drop images here"); }

    void paintInvitation(QPainter& painter, const QColor& color)
    {
        painter.setFont(orvaFont(OrvaFont::callout));
        const int textHeight = painter.fontMetrics().height();
        const double top = (height() - symbolSide - gap - textHeight) / 2;
        paintOrvaSymbol(painter, QStringLiteral("photo.on.rectangle.angled"),
                        QRectF((width() - symbolSide) / 2, top, symbolSide, symbolSide), color);
        painter.setPen(color);
        painter.drawText(QRectF(0, top + symbolSide + gap, width(), textHeight), Qt::AlignCenter,
                         invitation());
    }

    ResizerDropZone m_zone;
    ResizerFileRowView* m_row;
    Cancellables m_cancellables;
};

} // namespace

QWidget* makeOrvaWidget(const ResizerDropZone& zone)
{
    return new DropZoneView(zone);
}

} // namespace orvane
