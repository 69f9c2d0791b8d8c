#include "Orvane/Brand/OrvaneBrand.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QWidget>

#include <cmath>
#include <utility>

namespace orvane {

namespace {

/// A label, though it draws itself: assistive technology reads labels.
class WordmarkView final : public OrvaThemed<QLabel> {
public:
    explicit WordmarkView(OrvaneWordmark wordmark) : m_wordmark(std::move(wordmark))
    {
        setAccessibleName(m_wordmark.lead + OrvaneBrand::wordHead + OrvaneBrand::wordTail);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        themeChanged();
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        const QSizeF word = OrvaneBrand::wordmarkSize(m_wordmark.size, m_wordmark.lead);
        return QSize(static_cast<int>(std::ceil(word.width())) + 1,
                     static_cast<int>(std::ceil(word.height())));
    }

protected:
    void themeChanged() override { updateGeometry(); }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        OrvaneBrand::paintWordmark(painter, rect(), m_wordmark.size, {.head = orvaColor(OrvaColor::primary)},
                                   m_wordmark.lead);
    }

private:
    OrvaneWordmark m_wordmark;
};

/// The shadow falls a little downwards; the room for it is the same on all sides, so the badge stays centred.
class BadgeView final : public OrvaThemed<QWidget> {
public:
    explicit BadgeView(const AppIconBadge& badge)
        : m_badge(badge), m_room(badge.shadow == BadgeShadow::soft ? qRound(badge.size * 0.28) : 0)
    {
        const int side = qRound(badge.size) + 2 * m_room;
        setFixedSize(side, side);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QRectF box = QRectF(rect()).adjusted(m_room, m_room, -m_room, -m_room);
        if (m_room > 0)
            paintShadow(painter, box);
        OrvaneBrand::paintAppIconBadge(painter, box);
    }

private:
    /// Rings of growing size, each a breath of colour and closer together further in: they fall off like a
    /// blurred square.
    void paintShadow(QPainter& painter, const QRectF& box) const
    {
        const bool dark = orvaScheme() == OrvaScheme::dark;
        const int rings = dark ? 12 : 56;
        const double fall = m_room * 0.36;
        const double reach = m_room - fall;
        const double corner = OrvaneBrand::badgeCorner * box.width();
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        // Black: so little of any other colour would be rounded to another hue. On a dark ground so little of
        // black would be rounded to nothing.
        painter.setBrush(QColor(0, 0, 0, dark ? 12 : 1));
        for (int ring = 1; ring <= rings; ++ring) {
            const double share = static_cast<double>(ring) / rings;
            const double grow = reach * (1.35 * share * share - 0.35);
            const QRectF shape = box.adjusted(-grow, -grow + fall, grow, grow + fall);
            painter.drawRoundedRect(shape, corner + grow, corner + grow);
        }
        painter.restore();
    }

    AppIconBadge m_badge;
    int m_room;
};

constexpr double bridgeSymbol = 18;
constexpr int bridgeGap = 8;

} // namespace

QWidget* makeOrvaWidget(const OrvaneWordmark& wordmark)
{
    return new WordmarkView(wordmark);
}

QWidget* makeOrvaWidget(const AppIconBadge& badge)
{
    return new BadgeView(badge);
}

QWidget* makeOrvaWidget(const BridgeMark& mark)
{
    auto* widget = new QWidget;
    auto* line = new QHBoxLayout(widget);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(bridgeGap);
    for (const QString& symbol : mark.symbols)
        line->addWidget(new OrvaSymbolView(symbol, bridgeSymbol, OrvaColor::secondary));
    return widget;
}

} // namespace orvane
