#include "Orvane/Shortcuts/OrvaWrapView.h"

#include <QStyle>

#include <algorithm>

namespace orvane {

OrvaWrapLayout::OrvaWrapLayout(int spacing, OrvaWrapColumns columns) : m_gap(spacing), m_columns(columns)
{
    setContentsMargins(0, 0, 0, 0);
}

OrvaWrapLayout::~OrvaWrapLayout() = default;

void OrvaWrapLayout::addItem(QLayoutItem* item)
{
    m_items.emplace_back(item);
}

QLayoutItem* OrvaWrapLayout::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_items.at(static_cast<std::size_t>(index)).get() : nullptr;
}

QLayoutItem* OrvaWrapLayout::takeAt(int index)
{
    if (!itemAt(index))
        return nullptr;
    const auto place = m_items.begin() + index;
    QLayoutItem* item = place->release();
    m_items.erase(place);
    return item;
}

int OrvaWrapLayout::heightForWidth(int width) const
{
    return place(QRect(0, 0, width, 0), Move::no);
}

QSize OrvaWrapLayout::sizeHint() const
{
    const int column = columnWidth();
    QSize size(0, 0);
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize hint = item->sizeHint().expandedTo(QSize(column, 0));
        size = QSize(size.width() + (size.width() > 0 ? m_gap : 0) + hint.width(),
                     std::max(size.height(), hint.height()));
    }
    return size;
}

QSize OrvaWrapLayout::minimumSize() const
{
    QSize size(0, 0);
    for (const auto& item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void OrvaWrapLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    static_cast<void>(place(rect, Move::yes)); // the height was asked for before
}

int OrvaWrapLayout::columnWidth() const
{
    int width = 0;
    if (m_columns == OrvaWrapColumns::equal) {
        for (const auto& item : m_items)
            width = std::max(width, item->isEmpty() ? 0 : item->sizeHint().width());
    }
    return width;
}

int OrvaWrapLayout::place(const QRect& rect, Move move) const
{
    const Qt::LayoutDirection direction =
        parentWidget() ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    const int column = columnWidth();
    int x = 0;
    int y = 0;
    int lineHeight = 0;
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint().boundedTo(QSize(std::max(rect.width(), 1), QWIDGETSIZE_MAX));
        if (x > 0 && x + std::max(size.width(), column) > rect.width()) {
            x = 0;
            y += lineHeight + m_gap;
            lineHeight = 0;
        }
        if (move == Move::yes)
            item->setGeometry(
                QStyle::visualRect(direction, rect, QRect(rect.topLeft() + QPoint(x, y), size)));
        x += std::max(size.width(), column) + m_gap;
        lineHeight = std::max(lineHeight, size.height());
    }
    return y + lineHeight;
}

OrvaWrapView::OrvaWrapView(const OrvaWrap& wrap)
{
    auto* layout = new OrvaWrapLayout(static_cast<int>(wrap.spacing), wrap.columns);
    setLayout(layout);
    for (const AnyView& view : wrap.content) {
        if (QWidget* child = view.makeWidget())
            layout->addWidget(child);
    }
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

} // namespace orvane
