#include "Orvane/Onboarding/PageDotsView.h"

#include "Orvane/Brand/ShellText.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QLabel>
#include <QPainter>

namespace orvane {

namespace {

constexpr int dotSide = 7;
constexpr int dotGap = 8;
constexpr double otherOpacity = 0.3;

/// It is a label although it draws itself: assistive technology reads labels.
class DotsView final : public OrvaThemed<QLabel> {
public:
    explicit DotsView(const PageDots& dots) : m_count(dots.count)
    {
        setFixedSize(m_count * dotSide + (m_count - 1) * dotGap, dotSide);
        follow(m_cancellables, dots.index, [this](int index) {
            m_index = index;
            setAccessibleName(ShellText::tr("Page %1 of %2").arg(index + 1).arg(m_count));
            update();
        });
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        const QColor color = orvaColor(OrvaColor::primary);
        const bool mirrored = layoutDirection() == Qt::RightToLeft;
        for (int dot = 0; dot < m_count; ++dot) {
            const int place = mirrored ? m_count - 1 - dot : dot;
            painter.setBrush(dot == m_index ? color : faded(color, otherOpacity));
            painter.drawEllipse(QRectF(place * (dotSide + dotGap), 0, dotSide, dotSide));
        }
    }

private:
    int m_count;
    int m_index = 0;
    Cancellables m_cancellables;
};

} // namespace

QWidget* makeOrvaWidget(const PageDots& dots)
{
    return new DotsView(dots);
}

} // namespace orvane
