#include "Orvane/Navigation/OrvaSidebarView.h"

#include "OrvaneKit/Controls/OrvaPillView.h"
#include "OrvaneKit/Lists/OrvaListSetup.h"
#include "OrvaneKit/Model/OrvaBindings.h"

#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>

namespace orvane {

namespace {

constexpr int sideGap = 10;   // between the mark of the chosen row and the sidebar's edge
constexpr int inset = 6;      // from there to the tile
constexpr int iconGap = 10;   // between tile and title
constexpr int rowHeight = 32; // points, with the font's usual size
constexpr int headingHeight = 32;
constexpr int headingBottom = 6;
constexpr double corner = 7;
constexpr double dotSide = 8;
constexpr double dotStroke = 1.5;
constexpr double hollowOpacity = 0.4;
constexpr double hoveredShare = 0.45; // share of the strength of a chosen row

class RowDelegate final : public QStyledItemDelegate {
public:
    RowDelegate(const OrvaSidebarModel& model, QObject* parent) : QStyledItemDelegate(parent), m_model(model)
    {
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override
    {
        if (m_model.isHeading(index.row())) {
            const int text = QFontMetrics(orvaFont(OrvaFont::smallCaptionSemibold)).height();
            return QSize(0, std::max(headingHeight, text + 18));
        }
        return QSize(0, std::max(rowHeight, QFontMetrics(orvaFont(OrvaFont::body)).height() + 12));
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (const OrvaSidebarRow* row = m_model.at(index.row()))
            paintRow(*painter, option, *row);
        else
            paintHeading(*painter, option, index.data().toString());
        painter->restore();
    }

private:
    static void paintHeading(QPainter& painter, const QStyleOptionViewItem& option, const QString& text)
    {
        painter.setFont(orvaFont(OrvaFont::smallCaptionSemibold));
        painter.setPen(orvaColor(OrvaColor::secondary));
        const QRect room = option.rect.adjusted(sideGap + inset, 0, -sideGap - inset, -headingBottom);
        painter.drawText(room, QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignBottom),
                         painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
    }

    static void paintRow(QPainter& painter, const QStyleOptionViewItem& option, const OrvaSidebarRow& row)
    {
        const bool chosen = option.state & QStyle::State_Selected;
        paintGround(painter, option.rect, chosen, option.state & QStyle::State_MouseOver);

        const auto placed = [&option](int left, int width) {
            return QStyle::visualRect(option.direction, option.rect,
                                      QRect(left, option.rect.top(), width, option.rect.height()));
        };
        constexpr int tile = static_cast<int>(OrvaSidebar::tileSize);
        const int left = option.rect.left() + sideGap + inset;
        const int right = option.rect.right() + 1 - sideGap - inset;
        QRectF box(0, 0, tile, tile);
        box.moveCenter(QRectF(placed(left, tile)).center());
        paintOrvaIconTile(painter, {row.systemImage, tile, row.tileColor}, box);

        constexpr int dotRoom = static_cast<int>(dotSide) + iconGap;
        const int textLeft = left + tile + iconGap;
        const int width = right - textLeft - (row.status ? dotRoom : 0);
        painter.setFont(orvaFont(OrvaFont::body));
        painter.setPen(orvaColor(OrvaColor::primary));
        paintOrvaElidedText(painter, placed(textLeft, width), option.direction, row.title);
        if (row.status) {
            constexpr int side = static_cast<int>(dotSide);
            paintDot(painter, QRectF(placed(right - side, side)).center(), *row.status);
        }
    }

    static void paintGround(QPainter& painter, const QRect& row, bool chosen, bool hovered)
    {
        if (!chosen && !hovered)
            return;
        const double strength = orvaChosenOpacity(orvaScheme()) * (chosen ? 1 : hoveredShare);
        painter.setPen(Qt::NoPen);
        painter.setBrush(faded(orvaColor(OrvaColor::primary), strength));
        painter.drawRoundedRect(QRectF(row).adjusted(sideGap, 1, -sideGap, -1), corner, corner);
    }

    static void paintDot(QPainter& painter, const QPointF& center, const OrvaStatusDot& dot)
    {
        if (dot.fill == OrvaStatusDot::Fill::hollow) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(faded(orvaColor(dot.color), hollowOpacity), dotStroke));
        } else {
            painter.setPen(Qt::NoPen);
            painter.setBrush(orvaLightColor(dot.color, orvaScheme()));
        }
        const double radius = dotSide / 2 - (dot.fill == OrvaStatusDot::Fill::hollow ? dotStroke / 2 : 0);
        painter.drawEllipse(center, radius, radius);
    }

    const OrvaSidebarModel& m_model;
};

} // namespace

OrvaSidebarView::OrvaSidebarView(const OrvaSidebar& sidebar) : m_selection(sidebar.selection)
{
    setModel(&m_model);
    setItemDelegate(new RowDelegate(m_model, this));
    setUpOrvaList(*this, OrvaColor::sidebar);
    setAccessibleName(sidebar.label);
    themeChanged();
    // The row whose page is shown by default, without a choice, can be chosen too.
    connect(this, &QListView::clicked, this, &OrvaSidebarView::choose);
    follow(m_cancellables, sidebar.content, [this](const QList<OrvaSidebarSection>& sections) {
        m_model.setSections(sections);
        showSelection();
    });
    follow(m_cancellables, static_cast<const Live<QString>&>(m_selection),
           [this](const QString&) { showSelection(); });
}

void OrvaSidebarView::themeChanged()
{
    setOrvaGround(*this, OrvaColor::sidebar);
    scheduleDelayedItemsLayout();
}

void OrvaSidebarView::showSelection()
{
    const QScopedValueRollback showing(m_showing, true);
    const int row = m_model.rowOf(m_selection.get());
    const QModelIndex index = row < 0 ? QModelIndex() : m_model.index(row);
    if (index != currentIndex() || !selectionModel()->isSelected(index))
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
}

void OrvaSidebarView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    if (!m_showing)
        choose(current);
}

void OrvaSidebarView::choose(const QModelIndex& index)
{
    const OrvaSidebarRow* row = index.isValid() ? m_model.at(index.row()) : nullptr;
    if (row)
        m_selection.set(QString(row->tag));
}

// A click on a heading or below the last row would take the mark from the row of the page.
QItemSelectionModel::SelectionFlags OrvaSidebarView::selectionCommand(const QModelIndex& index,
                                                                      const QEvent* event) const
{
    if (!index.isValid() || m_model.isHeading(index.row()))
        return QItemSelectionModel::NoUpdate;
    return OrvaControl::selectionCommand(index, event);
}

void OrvaSidebarView::mousePressEvent(QMouseEvent* event)
{
    m_keyboardFocus = false;
    OrvaControl::mousePressEvent(event);
}

void OrvaSidebarView::paintEvent(QPaintEvent* event)
{
    OrvaControl::paintEvent(event);
    if (!showsFocusRing() || !currentIndex().isValid())
        return;
    QPainter painter(viewport());
    constexpr double ring = 2;
    const QRectF mark = QRectF(visualRect(currentIndex())).adjusted(sideGap, 1, -sideGap, -1);
    paintOrvaFocusRing(painter, mark.adjusted(ring, ring, -ring, -ring), corner - ring);
}

} // namespace orvane
