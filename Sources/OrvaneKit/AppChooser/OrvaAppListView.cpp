#include "OrvaneKit/AppChooser/OrvaAppListView.h"

#include "OrvaneKit/Lists/OrvaListSetup.h"
#include "OrvaneKit/Model/KitText.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"
#include "OrvaneKit/Theme/OrvaTint.h"

#include <QStyledItemDelegate>

#include <algorithm>

namespace orvane {

namespace {

constexpr int rowHeight = 36;
constexpr int sideGap = 10; // between the mark of the chosen program and the window's edge
constexpr int endGap = 6;   // above the first program and below the last
constexpr int inset = 8;
constexpr int iconSide = 24;
constexpr int iconGap = 10;
constexpr double corner = 7;

class ProgramDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return QSize(0, std::max(rowHeight, QFontMetrics(orvaFont(OrvaFont::body)).height() + 12));
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const bool chosen = option.state & QStyle::State_Selected;
        const bool enabled = option.state & QStyle::State_Enabled;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        paintGround(*painter, option.rect, chosen, enabled && (option.state & QStyle::State_MouseOver));
        painter->setOpacity(enabled ? 1 : orvaDisabledOpacity);
        paintIcon(*painter, placed(option, option.rect.left() + sideGap + inset, iconSide), index, chosen);
        paintText(*painter, option, index, chosen);
        painter->restore();
    }

private:
    static QRect placed(const QStyleOptionViewItem& option, int left, int width)
    {
        return QStyle::visualRect(option.direction, option.rect,
                                  QRect(left, option.rect.top(), width, option.rect.height()));
    }

    static void paintGround(QPainter& painter, const QRect& row, bool chosen, bool hovered)
    {
        if (!chosen && !hovered)
            return;
        painter.setPen(Qt::NoPen);
        painter.setBrush(chosen ? orvaColor(OrvaColor::accent)
                                : faded(orvaColor(OrvaColor::primary), OrvaTint::hoveredRow));
        painter.drawRoundedRect(QRectF(row).adjusted(sideGap, 0.5, -sideGap, -0.5), corner, corner);
    }

    static void paintIcon(QPainter& painter, const QRect& room, const QModelIndex& index, bool chosen)
    {
        const auto icon = index.data(Qt::DecorationRole).value<QIcon>();
        QRect box(0, 0, iconSide, iconSide);
        box.moveCenter(room.center());
        if (icon.availableSizes().isEmpty() && icon.pixmap(iconSide).isNull())
            paintOrvaSymbol(painter, QStringLiteral("app"), box,
                            orvaColor(chosen ? OrvaColor::onAccent : OrvaColor::secondary));
        else
            icon.paint(&painter, box);
    }

    static void paintText(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                          bool chosen)
    {
        const Qt::Alignment trailing =
            QStyle::visualAlignment(option.direction, Qt::AlignRight | Qt::AlignVCenter);
        const int left = option.rect.left() + sideGap + inset + iconSide + iconGap;
        const int width = option.rect.right() + 1 - sideGap - inset - left;

        const QString name = index.data(Qt::DisplayRole).toString();
        const QString detail = index.data(OrvaAppListModel::detailRole).toString();
        const QFont font = orvaFont(OrvaFont::body);
        const QFontMetrics metrics(font);
        const int most = detail.isEmpty() ? width : width * 3 / 5;
        const int nameWidth = std::min(metrics.horizontalAdvance(name) + 1, most);
        painter.setFont(font);
        painter.setPen(orvaColor(chosen ? OrvaColor::onAccent : OrvaColor::primary));
        paintOrvaElidedText(painter, placed(option, left, nameWidth), option.direction, name);
        if (detail.isEmpty())
            return;
        const QFont small = orvaFont(OrvaFont::caption);
        const int rest = width - nameWidth - iconGap;
        painter.setFont(small);
        painter.setPen(orvaColor(chosen ? OrvaColor::onAccent : OrvaColor::secondary));
        painter.drawText(placed(option, left + nameWidth + iconGap, rest), trailing,
                         QFontMetrics(small).elidedText(detail, Qt::ElideMiddle, rest));
    }
};

} // namespace

OrvaAppListView::OrvaAppListView(OrvaAppListModel& model) : m_model(model)
{
    setModel(&model);
    setItemDelegate(new ProgramDelegate(this));
    setUpOrvaList(*this, OrvaColor::window);
    setViewportMargins(0, endGap, 0, endGap);
    setUniformItemSizes(true);
    setAccessibleName(KitText::tr("Applications"));
    themeChanged();
}

void OrvaAppListView::themeChanged()
{
    setOrvaGround(*this, OrvaColor::window);
    scheduleDelayedItemsLayout();
}

void OrvaAppListView::focusInEvent(QFocusEvent* event)
{
    OrvaThemed::focusInEvent(event);
    // Keyboard focus without a marked row couldn't be seen.
    if (event->reason() != Qt::MouseFocusReason && !chosen())
        chooseFirst();
}

std::optional<InstalledApplication> OrvaAppListView::chosen() const
{
    const QModelIndexList marked = selectionModel()->selectedIndexes();
    if (marked.isEmpty() || !m_model.isAcceptable(marked.constFirst().row()))
        return std::nullopt;
    return m_model.at(marked.constFirst().row());
}

void OrvaAppListView::mark(int row)
{
    const QModelIndex index = m_model.index(row);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    scrollTo(index);
}

void OrvaAppListView::chooseNone()
{
    selectionModel()->clear();
}

void OrvaAppListView::chooseFirst()
{
    chooseNone();
    move(1);
}

bool OrvaAppListView::choose(const InstalledApplication& application)
{
    for (int row = 0; row < m_model.rowCount(); ++row) {
        if (m_model.isAcceptable(row) && m_model.at(row) == application) {
            mark(row);
            return true;
        }
    }
    return false;
}

void OrvaAppListView::move(int steps)
{
    const int step = steps < 0 ? -1 : 1;
    const QModelIndexList marked = selectionModel()->selectedIndexes();
    const int count = m_model.rowCount();
    int row = marked.isEmpty() ? (step < 0 ? count : -1) : marked.constFirst().row();
    int goal = -1;
    for (int left = std::abs(steps); left > 0;) {
        row += step;
        if (row < 0 || row >= count)
            break;
        if (!m_model.isAcceptable(row))
            continue;
        goal = row;
        --left;
    }
    if (goal >= 0)
        mark(goal);
}

int OrvaAppListView::programsInSight() const
{
    return std::max(1, viewport()->height() / std::max(1, sizeHintForRow(0)) - 1);
}

} // namespace orvane
