#include "Capabilities/ClipboardHistory/Panel/HistoryRow.h"

#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>

namespace orvane {

namespace {

constexpr int stackGap = 2; // between the lines of text and the source
constexpr int columnGap = 10;
constexpr int mostLines = 2;
constexpr double thumbnailCorner = 4;
constexpr double symbolSide = 18;
constexpr qsizetype mostCharacters = 600; // far more than fits in two lines
constexpr qsizetype mostLookedAt = 4096;  // including blank ones, which aren't shown
constexpr qsizetype likelyLineLength = 46;

/// Returns a size of the system's scale, on which body text has 13, in the application's font.
QFont systemFont(double size)
{
    QFont font = orvaFont(OrvaFont::body);
    constexpr double body = 13;
    if (font.pixelSize() > 0)
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * size / body)));
    else
        font.setPointSizeF(font.pointSizeF() * size / body);
    return font;
}

QString symbolOf(ClipKind kind)
{
    switch (kind) {
    case ClipKind::image:
        return QStringLiteral("photo");
    case ClipKind::fileURLs:
        return QStringLiteral("doc.on.doc");
    case ClipKind::url:
        return QStringLiteral("link");
    case ClipKind::text:
        return QStringLiteral("text.alignleft");
    }
    Q_UNREACHABLE();
}

bool endsLine(QChar character)
{
    return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

/// Returns the beginning of a text with control characters as spaces.
QString shown(QStringView text)
{
    QString lines;
    bool atStart = true;
    for (const QChar character : text) {
        if (lines.size() >= mostCharacters)
            break;
        if (endsLine(character)) {
            if (!atStart)
                lines.append(QChar::LineSeparator);
            atStart = true;
            continue;
        }
        if (atStart && character.isSpace())
            continue;
        lines.append(character.category() == QChar::Other_Control ? QChar(u' ') : character);
        atStart = false;
    }
    while (lines.endsWith(QChar::LineSeparator))
        lines.chop(1);
    return lines;
}

/// Returns the beginning of preview() without copying the rest.
QString startOfPreview(const ClipItem& item)
{
    const bool isText = item.kind == ClipKind::text || item.kind == ClipKind::url;
    const QStringView text = isText && item.text ? QStringView(*item.text).trimmed() : QStringView();
    return shown(text.isEmpty() ? item.preview() : text.left(mostLookedAt));
}

} // namespace

HistoryRow::HistoryRow(const ClipItem& item)
    : symbol(symbolOf(item.kind)),
      preview(startOfPreview(item)),
      source(item.sourceApp.value_or(QString())),
      isPinned(item.pinned)
{
}

HistoryRowLook::HistoryRowLook()
    : m_previewFont(systemFont(12)),
      m_sourceFont(systemFont(9)),
      m_previewLine(QFontMetrics(m_previewFont).lineSpacing()),
      m_sourceLine(QFontMetrics(m_sourceFont).lineSpacing()),
      m_pinSide(QFontMetricsF(m_sourceFont).ascent() + 2)
{
}

int HistoryRowLook::heightWith(int lineCount, bool hasSource) const
{
    const int text = lineCount * m_previewLine + (hasSource ? stackGap + m_sourceLine : 0);
    return std::max(iconSide, text) + 2 * paddingV + divider;
}

int HistoryRowLook::textWidth(const HistoryRow& row, int width) const
{
    const int pin = row.isPinned ? columnGap + qRound(m_pinSide) : 0;
    return std::max(1, width - 2 * paddingH - iconSide - columnGap - pin);
}

QStringList HistoryRowLook::lines(const HistoryRow& row, int room) const
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(row.preview, m_previewFont);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine first = layout.createLine();
    if (!first.isValid())
        return {};
    first.setLineWidth(room);
    layout.endLayout();

    const int end = first.textStart() + first.textLength();
    QString top = row.preview.left(end);
    if (top.endsWith(QChar::LineSeparator))
        top.chop(1);
    QString rest = row.preview.mid(end);
    if (rest.isEmpty())
        return {top};
    if (const qsizetype cut = rest.indexOf(QChar::LineSeparator); cut >= 0)
        rest = rest.left(cut) + QStringLiteral("…");
    return {top, QFontMetrics(m_previewFont).elidedText(rest, Qt::ElideRight, room)};
}

int HistoryRowLook::height(const HistoryRow& row, int width) const
{
    return heightWith(static_cast<int>(lines(row, textWidth(row, width)).size()), !row.source.isEmpty());
}

int HistoryRowLook::likelyHeight(const ClipItem& item) const
{
    int lineCount = 1;
    if (item.kind != ClipKind::image && item.text) {
        const auto start = QStringView(*item.text).left(likelyLineLength + 1);
        const bool isLong = start.size() > likelyLineLength;
        lineCount = isLong || std::any_of(start.begin(), start.end(), endsLine) ? mostLines : 1;
    }
    return heightWith(lineCount, item.sourceApp.has_value());
}

void HistoryRowLook::paint(QPainter& painter, const QRect& rect, Qt::LayoutDirection direction,
                           const HistoryRow& row, const Icon& icon, State state, FocusRing ring) const
{
    const QRect plain = rect.adjusted(0, 0, 0, -divider);
    painter.fillRect(QRect(rect.left(), plain.bottom() + 1, rect.width(), divider),
                     orvaColor(OrvaColor::divider));
    paintGround(painter, plain, state, ring);
    const auto placed = [&](int x, int width) {
        return QStyle::visualRect(direction, plain,
                                  QRect(plain.left() + x, plain.top(), width, plain.height()));
    };
    QRect box(0, 0, iconSide, iconSide);
    box.moveCenter(placed(paddingH, iconSide).center());
    paintIcon(painter, box, row, icon);
    const int text = textWidth(row, plain.width());
    paintText(painter, placed(paddingH + iconSide + columnGap, text), direction, row);
    if (row.isPinned) {
        QRectF pin(0, 0, m_pinSide, m_pinSide);
        const int side = qRound(m_pinSide);
        pin.moveCenter(QRectF(placed(plain.width() - paddingH - side, side)).center());
        paintOrvaSymbol(painter, QStringLiteral("pin.fill"), pin,
                        orvaLightColor(OrvaColor::orange, orvaScheme()));
    }
}

void HistoryRowLook::paintGround(QPainter& painter, const QRect& rect, State state, FocusRing ring) const
{
    if (state != State::plain)
        painter.fillRect(rect, faded(orvaColor(OrvaColor::primary), state == State::pressed ? 0.11 : 0.06));
    if (ring == FocusRing::shown)
        paintOrvaFocusRing(painter, QRectF(rect).adjusted(5, 4, -5, -4), 5);
}

void HistoryRowLook::paintIcon(QPainter& painter, const QRect& box, const HistoryRow& row,
                               const Icon& icon) const
{
    if (!icon.isLoading && icon.thumbnail.isNull()) {
        QRectF symbol(0, 0, symbolSide, symbolSide);
        symbol.moveCenter(QRectF(box).center());
        paintOrvaSymbol(painter, row.symbol, symbol, orvaColor(OrvaColor::secondary));
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QBrush brush(faded(orvaColor(OrvaColor::primary), 0.06));
    if (!icon.isLoading) {
        brush = QBrush(icon.thumbnail);
        QTransform place = QTransform::fromTranslate(box.left(), box.top());
        place.scale(static_cast<double>(box.width()) / icon.thumbnail.width(),
                    static_cast<double>(box.height()) / icon.thumbnail.height());
        brush.setTransform(place);
    }
    painter.setBrush(brush);
    painter.drawRoundedRect(box, thumbnailCorner, thumbnailCorner);
    painter.restore();
}

void HistoryRowLook::paintText(QPainter& painter, const QRect& room, Qt::LayoutDirection direction,
                               const HistoryRow& row) const
{
    const QStringList previewLines = lines(row, room.width());
    const Qt::Alignment leading = QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter);
    const int flags = static_cast<int>(leading) | Qt::TextSingleLine;
    const int source = row.source.isEmpty() ? 0 : stackGap + m_sourceLine;
    int y = room.top() + (room.height() - static_cast<int>(previewLines.size()) * m_previewLine - source) / 2;
    painter.setFont(m_previewFont);
    painter.setPen(orvaColor(OrvaColor::primary));
    for (const QString& line : previewLines) {
        painter.drawText(QRect(room.left(), y, room.width(), m_previewLine), flags, line);
        y += m_previewLine;
    }
    if (row.source.isEmpty())
        return;
    painter.setFont(m_sourceFont);
    painter.setPen(orvaColor(OrvaColor::secondary));
    painter.drawText(QRect(room.left(), y + stackGap, room.width(), m_sourceLine), flags,
                     QFontMetrics(m_sourceFont).elidedText(row.source, Qt::ElideMiddle, room.width()));
}

} // namespace orvane
