#include "Capabilities/ClipboardHistory/Panel/HistoryListView.h"

#include "Capabilities/ClipboardHistory/ClipboardHistoryText.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryRowAccessibility.h"
#include "OrvaneKit/Controls/OrvaMenuView.h"
#include "OrvaneKit/Lists/OrvaScrollBarView.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include <algorithm>

namespace orvane {

namespace {

constexpr int lineStep = 20;     // points for each line that the wheel moves
constexpr int mostKeptRows = 96; // prepared texts; a view holds fewer than twenty

} // namespace

HistoryListView::HistoryListView(HistoryViewModel& model)
    : m_model(model), m_thumbnails(model, [this] { viewport()->update(); })
{
    installHistoryAccessibility();
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(new OrvaScrollBarView);
    verticalScrollBar()->setSingleStep(lineStep);
    setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard with the search field
    viewport()->setAutoFillBackground(false);
    viewport()->setMouseTracking(true);
    setAccessibleName(ClipboardHistoryText::tr("Clipboard history"));
}

HistoryListView::~HistoryListView() = default;

void HistoryListView::themeChanged()
{
    m_look = HistoryRowLook();
    estimate();
    settle();
}

void HistoryListView::setItems(const QList<ClipItem>& items)
{
    const std::optional<QUuid> current =
        m_current >= 0 ? std::optional(m_items.at(m_current).id) : std::nullopt;
    m_items = items;
    m_pressed = -1;
    if (current) {
        const auto found = std::ranges::find(std::as_const(m_items), *current, &ClipItem::id);
        m_current = found != m_items.cend() ? static_cast<int>(found - m_items.cbegin())
                                            : std::min(m_current, rowCount() - 1);
    }
    estimate();
    settle();
    hover(viewport()->underMouse() ? rowAt(viewport()->mapFromGlobal(QCursor::pos())) : -1);
    viewport()->update();
    announceHistoryRowsChanged(*this);
}

void HistoryListView::startAnew()
{
    m_current = -1;
    m_pressed = -1;
    m_hovered = -1;
    m_thumbnails.clear();
    verticalScrollBar()->setValue(0);
    settle();
}

void HistoryListView::estimate()
{
    std::vector<int> heights;
    heights.reserve(static_cast<std::size_t>(m_items.size()));
    for (const ClipItem& item : std::as_const(m_items)) // no copy of the list, which is shared
        heights.push_back(m_look.likelyHeight(item));
    m_heights.reset(heights);
    m_rows.clear();
}

const HistoryRow& HistoryListView::row(int row) const
{
    auto known = m_rows.constFind(row);
    if (known == m_rows.constEnd()) {
        if (m_rows.size() >= mostKeptRows)
            m_rows.clear();
        known = m_rows.insert(row, HistoryRow(m_items.at(row)));
    }
    return *known;
}

int HistoryListView::verticalScrollBarValue() const
{
    return verticalScrollBar()->value();
}

/// Measures the rows in view, which moves those below; the topmost row stays in place.
void HistoryListView::settle()
{
    if (m_isSettling)
        return;
    const QScopedValueRollback settling(m_isSettling, true);
    QScrollBar& bar = *verticalScrollBar();
    for (bool isSettled = false; !isSettled;) {
        const int width = viewport()->width();
        const int top = firstInView();
        const int offset = top >= 0 ? bar.value() - m_heights.top(top) : 0;
        const bool moved = measureInView();
        bar.setPageStep(viewport()->height());
        bar.setRange(0, std::max(0, m_heights.total() - viewport()->height()));
        if (moved && top >= 0)
            bar.setValue(m_heights.top(top) + std::min(offset, m_heights.height(top)));
        isSettled = !moved && viewport()->width() == width; // the scroll bar comes and goes with the range
    }
    fetchThumbnails();
}

/// Returns true if a height differs from the guess.
bool HistoryListView::measureInView()
{
    bool moved = false;
    const int width = viewport()->width();
    const int end = verticalScrollBarValue() + viewport()->height();
    for (int each = firstInView(); each >= 0 && each < rowCount() && m_heights.top(each) < end; ++each) {
        const int height = m_look.height(row(each), width);
        moved = moved || height != m_heights.height(each);
        m_heights.set(each, height);
    }
    return moved;
}

void HistoryListView::fetchThumbnails()
{
    QStringList names;
    const int end = verticalScrollBarValue() + viewport()->height();
    for (int each = firstInView(); isVisible() && each >= 0 && each < rowCount(); ++each) {
        if (m_heights.top(each) >= end)
            break;
        const ClipItem& item = m_items.at(each);
        if (item.kind == ClipKind::image && item.imageFileName)
            names.append(*item.imageFileName);
    }
    m_thumbnails.setWanted(names, devicePixelRatioF());
}

QRect HistoryListView::rowRect(int row) const
{
    return QRect(0, m_heights.top(row) - verticalScrollBarValue(), viewport()->width(),
                 m_heights.height(row));
}

int HistoryListView::rowAt(const QPoint& point) const
{
    const int y = point.y() + verticalScrollBarValue();
    if (!viewport()->rect().contains(point) || y >= m_heights.total())
        return -1;
    return m_heights.rowAt(y);
}

void HistoryListView::press(int row)
{
    if (row < 0 || row >= rowCount() || !m_model.onSelect)
        return;
    // The callbacks may end the item and this object.
    const ClipItem item = m_items.at(row);
    const auto select = m_model.onSelect;
    select(item);
}

void HistoryListView::openMenu(int row, const QPoint& globalPoint)
{
    if (row < 0 || row >= rowCount())
        return;
    closeMenu();
    const ClipItem item = m_items.at(row);
    auto* menu = new OrvaMenuView(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const QString& title, const std::function<void(const ClipItem&)>& callback) {
        return menu->addAction(title, this, [item, callback] {
            if (callback)
                callback(item);
        });
    };
    add(item.pinned ? ClipboardHistoryText::tr("Unpin") : ClipboardHistoryText::tr("Pin"),
        m_model.onTogglePin);
    menu->setDestructive(*add(ClipboardHistoryText::tr("Delete"), m_model.onDelete));
    m_menu = menu;
    menu->popup(globalPoint);
}

void HistoryListView::closeMenu()
{
    if (m_menu)
        m_menu->close();
}

void HistoryListView::hover(int row)
{
    if (row == m_hovered)
        return;
    m_hovered = row;
    viewport()->update();
}

void HistoryListView::focusRow(int row)
{
    if (row < 0 || row >= rowCount())
        return;
    setFocus(Qt::TabFocusReason);
    moveFocus(row);
}

void HistoryListView::moveFocus(int row)
{
    m_current = row;
    keepInView(row);
    viewport()->update();
    announceHistoryRowFocused(*this, row);
}

void HistoryListView::keepInView(int row)
{
    QScrollBar& bar = *verticalScrollBar();
    const int top = m_heights.top(row);
    if (top < bar.value()) {
        bar.setValue(top);
        return;
    }
    // The row's own height may be a guess until it is in view.
    for (int tries = 0; tries < 2; ++tries) {
        const int below = m_heights.top(row + 1) - bar.value() - viewport()->height();
        if (below <= 0)
            return;
        bar.setValue(bar.value() + below);
    }
}

/// Each row takes the focus; after the last one comes what follows the list.
bool HistoryListView::focusNextPrevChild(bool next)
{
    const int row = m_current + (next ? 1 : -1);
    if (!hasFocus() || row < 0 || row >= rowCount())
        return OrvaThemed::focusNextPrevChild(next);
    moveFocus(row);
    return true;
}

void HistoryListView::focusInEvent(QFocusEvent* event)
{
    OrvaThemed::focusInEvent(event);
    if (rowCount() > 0 && event->reason() == Qt::TabFocusReason)
        moveFocus(0);
    else if (rowCount() > 0 && (m_current < 0 || event->reason() == Qt::BacktabFocusReason))
        moveFocus(rowCount() - 1);
    viewport()->update();
}

void HistoryListView::focusOutEvent(QFocusEvent* event)
{
    OrvaThemed::focusOutEvent(event);
    viewport()->update();
}

void HistoryListView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        press(m_current);
        return;
    case Qt::Key_Down:
    case Qt::Key_Up:
        if (const int row = m_current + (event->key() == Qt::Key_Down ? 1 : -1); row >= 0 && row < rowCount())
            moveFocus(row);
        return;
    case Qt::Key_Home:
    case Qt::Key_End:
        if (rowCount() > 0)
            moveFocus(event->key() == Qt::Key_Home ? 0 : rowCount() - 1);
        return;
    default:
        break;
    }
    const QString text = event->text();
    if (onTyping && ((!text.isEmpty() && text.at(0).isPrint()) || event->key() == Qt::Key_Backspace))
        onTyping(event);
    else
        event->ignore();
}

void HistoryListView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = rowAt(event->position().toPoint());
    viewport()->update();
}

void HistoryListView::mouseMoveEvent(QMouseEvent* event)
{
    hover(rowAt(event->position().toPoint()));
}

void HistoryListView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const int pressed = std::exchange(m_pressed, -1);
    viewport()->update();
    if (pressed >= 0 && rowAt(event->position().toPoint()) == pressed)
        press(pressed);
}

void HistoryListView::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Keyboard) {
        openMenu(rowAt(event->pos()), event->globalPos());
        return;
    }
    if (const int row = focusedRow(); row >= 0) {
        const QRect rect = rowRect(row);
        openMenu(row, viewport()->mapToGlobal(QPoint(rect.left() + HistoryRowLook::iconSide, rect.bottom())));
    }
}

bool HistoryListView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        hover(-1);
    return OrvaThemed::viewportEvent(event);
}

HistoryRowLook::Icon HistoryListView::icon(int row) const
{
    const ClipItem& item = m_items.at(row);
    if (item.kind != ClipKind::image || !item.imageFileName)
        return {};
    return {.thumbnail = m_thumbnails.image(*item.imageFileName),
            .isLoading = m_thumbnails.state(*item.imageFileName) == HistoryThumbnails::State::loading};
}

void HistoryListView::paintRow(QPainter& painter, int each) const
{
    using State = HistoryRowLook::State;
    const bool isHovered = each == m_hovered;
    const State state = isHovered && each == m_pressed ? State::pressed
                        : isHovered                    ? State::hovered
                                                       : State::plain;
    m_look.paint(painter, rowRect(each), layoutDirection(), row(each), icon(each), state,
                 each == focusedRow() ? HistoryRowLook::FocusRing::shown : HistoryRowLook::FocusRing::hidden);
}

void HistoryListView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    const int end = event->rect().bottom() + 1 + verticalScrollBarValue();
    const int start = std::max(0, event->rect().top()) + verticalScrollBarValue();
    for (int each = rowAtContent(start); each >= 0 && each < rowCount() && m_heights.top(each) < end; ++each)
        paintRow(painter, each);
}

void HistoryListView::resizeEvent(QResizeEvent* event)
{
    OrvaThemed::resizeEvent(event);
    settle();
}

void HistoryListView::scrollContentsBy(int, int)
{
    settle();
    viewport()->update();
}

void HistoryListView::showEvent(QShowEvent* event)
{
    OrvaThemed::showEvent(event);
    settle();
}

} // namespace orvane
