#include "OrvaneKit/Controls/OrvaPillView.h"

#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "OrvaneKit/Theme/OrvaTint.h"

#include <QHBoxLayout>
#include <QLinearGradient>

#include <utility>

namespace orvane {

namespace {

constexpr QMargins pillMargins(8, 3, 8, 3);
constexpr int pillGap = 4;
constexpr double pillSymbol = 13;
constexpr double chipCorner = 6;

/// A symbol as heavy as the text beside it.
class HeavySymbol final : public OrvaThemed<QWidget> {
public:
    HeavySymbol(QString name, OrvaColor color) : m_name(std::move(name)), m_color(color)
    {
        setFixedSize(qRound(pillSymbol), qRound(pillSymbol));
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        paintOrvaSymbol(painter, m_name, rect(), orvaColor(m_color), SystemSymbol::Weight::semibold);
    }

private:
    QString m_name;
    OrvaColor m_color;
};

struct Pill {
    /// Null without a symbol, and for a heavy one.
    OrvaSymbolView* symbol = nullptr;
    OrvaTextView* text = nullptr;
};

Pill fillPill(QWidget& ground, const Live<QString>& text, const std::optional<QString>& symbol, OrvaFont font,
              OrvaColor color)
{
    auto* line = new QHBoxLayout(&ground);
    line->setContentsMargins(pillMargins);
    line->setSpacing(pillGap);
    Pill pill;
    if (symbol && font == OrvaFont::smallCaptionSemibold)
        line->addWidget(new HeavySymbol(*symbol, color));
    else if (symbol)
        line->addWidget(pill.symbol = new OrvaSymbolView(*symbol, pillSymbol, color));
    line->addWidget(pill.text = new OrvaTextView(text, font, color, OrvaTextView::Wrapping::singleLine));
    ground.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return pill;
}

} // namespace

OrvaChipView::OrvaChipView(const OrvaChip& chip)
{
    const Pill pill =
        fillPill(*this, chip.text, chip.systemImage, OrvaFont::captionMedium, OrvaColor::secondary);
    follow(m_cancellables, chip.prominent, [pill](bool prominent) {
        const OrvaColor color = prominent ? OrvaColor::primary : OrvaColor::secondary;
        pill.text->setColor(color);
        if (pill.symbol)
            pill.symbol->setColor(color);
    });
}

void OrvaChipView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(orvaColor(OrvaColor::primary), OrvaTint::chip));
    painter.drawRoundedRect(rect(), chipCorner, chipCorner);
}

OrvaBadgeView::OrvaBadgeView(const OrvaBadge& badge) : m_color(badge.color)
{
    fillPill(*this, badge.text, badge.systemImage, OrvaFont::smallCaptionSemibold, badge.color);
}

void OrvaBadgeView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faded(orvaColor(m_color), OrvaTint::badge));
    painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
}

OrvaIconTileView::OrvaIconTileView(const OrvaIconTile& tile) : m_tile(tile)
{
    setFixedSize(qRound(tile.size), qRound(tile.size));
}

void OrvaIconTileView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintOrvaIconTile(painter, m_tile, rect());
}

void paintOrvaIconTile(QPainter& painter, const OrvaIconTile& tile, const QRectF& box)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    // The deeper colours of the light scheme are used in the dark one too: white symbols need them behind
    // them.
    const QColor color = orvaColor(tile.color, OrvaScheme::light);
    QLinearGradient gradient(box.topLeft(), box.bottomLeft());
    gradient.setColorAt(0, faded(color, OrvaTint::tileTop));
    gradient.setColorAt(1, faded(color, OrvaTint::tileBottom));
    const double corner = 0.26 * box.width();
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(box, corner, corner);
    painter.setPen(QPen(faded(Qt::white, 0.12), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), corner - 0.5, corner - 0.5);

    QRectF symbol(0, 0, 0.52 * box.width(), 0.52 * box.width());
    symbol.moveCenter(box.center());
    paintOrvaSymbol(painter, tile.systemImage, symbol, Qt::white, SystemSymbol::Weight::semibold);
    painter.restore();
}

void OrvaBannerView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(faded(orvaColor(m_color), 0.25), 1));
    painter.setBrush(faded(orvaColor(m_color), OrvaTint::banner));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Orva::bannerCorner,
                            Orva::bannerCorner);
}

} // namespace orvane
