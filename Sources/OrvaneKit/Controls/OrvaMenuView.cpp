#include "OrvaneKit/Controls/OrvaMenuView.h"

#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "Platform/Panels.h"
#include "Platform/Platform.h"

#include <QAction>
#include <QStyle>

namespace orvane {

namespace {

constexpr double corner = 9;
constexpr double itemCorner = 5;
constexpr double checkWidth = 28;

} // namespace

OrvaMenuView::OrvaMenuView(QWidget* parent) : OrvaThemed(parent)
{
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setFont(orvaFont(OrvaFont::body));
    // The style sheet sets measures only; the contents are painted below.
    setStyleSheet(QStringLiteral("QMenu { padding: 5px; background: transparent; border: none; }"
                                 "QMenu::item { padding: 6px 20px 6px 28px; border: none; }"
                                 "QMenu::indicator { width: 0; }"));
}

void OrvaMenuView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setPen(QPen(orvaColor(OrvaColor::controlStroke), 1));
    painter.setBrush(orvaColor(OrvaColor::cardFill));
    // Without a compositor, the area outside of round corners would be black.
    const double round = isPlatformInstalled() && platform().panels.isCompositing() ? corner : 0;
    if (round == 0)
        painter.fillRect(rect(), orvaColor(OrvaColor::cardFill));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), round, round);
    for (QAction* action : actions())
        paintItem(painter, *action, actionGeometry(action), action == activeAction());
}

void OrvaMenuView::paintItem(QPainter& painter, const QAction& action, const QRectF& rect, bool current) const
{
    if (current) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(orvaColor(OrvaColor::accent));
        painter.drawRoundedRect(rect, itemCorner, itemCorner);
    }
    const OrvaColor plain = m_destructive.contains(&action) ? OrvaColor::red : OrvaColor::primary;
    const QColor ink = orvaColor(current ? OrvaColor::onAccent : plain);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    QRectF check(rect.left(), rect.top(), checkWidth, rect.height());
    QRectF text = rect.adjusted(checkWidth, 0, -8, 0);
    if (mirrored) {
        check.moveRight(rect.right());
        text = rect.adjusted(8, 0, -checkWidth, 0);
    }
    if (action.isChecked()) {
        paintOrvaSymbol(painter, QStringLiteral("checkmark"),
                        QRectF(check.center() - QPointF(7, 7), QSizeF(14, 14)), ink,
                        SystemSymbol::Weight::semibold);
    }
    painter.setPen(ink);
    painter.drawText(text, QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter),
                     QString(action.text()).replace(QStringLiteral("&&"), QStringLiteral("&")));
}

} // namespace orvane
