#include "Orvane/Brand/OrvaneBrand.h"

#include "Orvane/Brand/ShellText.h"
#include "Orvane/Menus/MenuBarIcon.h"
#include "OrvaneKit/Theme/OrvaTheme.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>

#include <array>
#include <cmath>

namespace orvane {

namespace {

constexpr double kerning = 0.2; // points

/// A font of fixed size, whatever the user's font size is: the word is a picture.
QFont wordmarkFont(double size)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(qMax(1, static_cast<int>(std::lround(size))));
    font.setWeight(QFont::DemiBold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, kerning);
    return font;
}

} // namespace

QString OrvaneBrand::tagline()
{
    return ShellText::tr("Small tools for the way you already work.");
}

QColor OrvaneBrand::WordmarkColors::tail() const
{
    constexpr int middle = 128; // of 255
    return orvaColor(OrvaColor::link, head.lightness() > middle ? OrvaScheme::dark : OrvaScheme::light);
}

QSizeF OrvaneBrand::wordmarkSize(double size, const QString& lead)
{
    const QFontMetricsF metrics(wordmarkFont(size));
    return QSizeF(metrics.horizontalAdvance(lead + wordHead) + metrics.horizontalAdvance(wordTail),
                  metrics.height());
}

void OrvaneBrand::paintWordmark(QPainter& painter, const QRectF& box, double size,
                                const WordmarkColors& colors, const QString& lead)
{
    const QFont font = wordmarkFont(size);
    const QFontMetricsF metrics(font);
    const QString head = lead + wordHead;
    const double baseline = box.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    const bool mirrored = painter.layoutDirection() == Qt::RightToLeft;
    const double left = mirrored ? box.right() - wordmarkSize(size, lead).width() : box.left();
    painter.save();
    painter.setFont(font);
    painter.setPen(colors.head);
    painter.drawText(QPointF(left, baseline), head);
    painter.setPen(colors.tail());
    painter.drawText(QPointF(left + metrics.horizontalAdvance(head), baseline), wordTail);
    painter.restore();
}

void OrvaneBrand::paintAppIconBadge(QPainter& painter, const QRectF& box)
{
    const double corner = badgeCorner * box.width();
    QLinearGradient ground(box.topLeft(), box.bottomRight());
    ground.setColorAt(0, accent.lighter(118));
    ground.setColorAt(0.45, accent);
    ground.setColorAt(1, QColor(0x42, 0x3a, 0xc8));
    QLinearGradient shine(box.topLeft(), box.bottomLeft());
    shine.setColorAt(0, QColor(255, 255, 255, 84));
    shine.setColorAt(0.5, QColor(255, 255, 255, 12));
    shine.setColorAt(1, QColor(255, 255, 255, 5));

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(box, corner, corner);
    const double edge = box.width() / 64;
    painter.setPen(QPen(shine, edge));
    painter.setBrush(Qt::NoBrush);
    const double half = edge / 2;
    painter.drawRoundedRect(box.adjusted(half, half, -half, -half), corner - half, corner - half);

    QRectF mark(0, 0, markShare * box.width(), markShare * box.height());
    mark.moveCenter(box.center());
    const MenuBarIcon::Shape shape = MenuBarIcon::shape(mark);
    constexpr std::array opacities{1.0f, 0.72f, 0.72f, 0.44f};
    painter.setPen(Qt::NoPen);
    for (std::size_t cell = 0; cell < shape.cells.size(); ++cell) {
        painter.setBrush(QColor::fromRgbF(1, 1, 1, opacities.at(cell)));
        painter.drawRoundedRect(shape.cells.at(cell), shape.cornerRadius, shape.cornerRadius);
    }
    painter.restore();
}

OrvaTextButton OrvaneBrand::link(const QString& title, const QString& url)
{
    return {.title = title, .action = [url] { platform().sharedWorkspace.openURL(url); }};
}

} // namespace orvane
