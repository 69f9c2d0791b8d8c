#include "Orvane/Brand/OrvaneBrand.h"
#include "OrvaneKit/Theme/OrvaSoftShadow.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QLabel>
#include <QPainter>
#include <QWidget>

#include <cmath>
#include <utility>

namespace orvane {

namespace {

/// It is a label although it draws itself: assistive technology reads labels.
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
        : m_badge(badge),
          m_room(badge.shadow == BadgeShadow::soft ? qRound(badge.size * 0.28) : 0),
          m_shadow({.corner = OrvaneBrand::badgeCorner * badge.size,
                    .room = static_cast<double>(m_room),
                    .fall = 0.36 * m_room,
                    .inset = 0.27 * m_room,
                    .power = 1.7,
                    .strengthOnLight = 0.2,
                    .strengthOnDark = 0.4})
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
            m_shadow.paint(painter, box);
        OrvaneBrand::paintAppIconBadge(painter, box);
    }

private:
    AppIconBadge m_badge;
    int m_room;
    OrvaSoftShadow m_shadow;
};

} // namespace

QWidget* makeOrvaWidget(const OrvaneWordmark& wordmark)
{
    return new WordmarkView(wordmark);
}

QWidget* makeOrvaWidget(const AppIconBadge& badge)
{
    return new BadgeView(badge);
}

} // namespace orvane
