#include "OrvaneKit/Lists/OrvaForEachView.h"

#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaFocus.h"

#include <QApplication>
#include <QHash>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace orvane {

namespace {

/// Returns the part of `to` at the position that `stop` has in `from`, or the nearest that takes focus.
QWidget* counterpart(const QWidget& from, QWidget* stop, const QWidget& to)
{
    QList<QWidget*> targets = focusPlaces(to);
    targets.removeIf([](const QWidget* target) { return !canTakeTab(*target); });
    if (targets.isEmpty())
        return nullptr;
    const qsizetype index = std::max<qsizetype>(0, focusPlaces(from).indexOf(stop));
    return targets.at(std::min(index, targets.size() - 1));
}

QWidget* nextOutside(const QWidget& view)
{
    for (QWidget* step = view.nextInFocusChain(); step != &view; step = step->nextInFocusChain()) {
        if (!view.isAncestorOf(step) && canTakeTab(*step))
            return step;
    }
    return nullptr;
}

} // namespace

QList<qsizetype> keptIndices(const QStringList& before, const QStringList& after)
{
    QHash<QString, QList<qsizetype>> places;
    for (qsizetype index = 0; index < before.size(); ++index)
        places[before.at(index)].append(index);
    QList<qsizetype> kept;
    for (const QString& key : after) {
        QList<qsizetype>& left = places[key];
        kept.append(left.isEmpty() ? -1 : left.takeFirst());
    }
    return kept;
}

OrvaForEachView::OrvaForEachView(const Live<QList<OrvaForEach::Item>>& content)
    : m_stack(new QVBoxLayout(this))
{
    m_stack->setContentsMargins(0, 0, 0, 0);
    m_stack->setSpacing(0);
    follow(m_cancellables, content, [this](const QList<OrvaForEach::Item>& items) { showItems(items); });
}

void OrvaForEachView::showItems(const QList<OrvaForEach::Item>& items)
{
    QWidget* const anchor = tabStopBefore();
    const std::vector<Row> before = m_rows;
    m_rows = rowsFor(items);
    layOutRows();
    orderTabs(anchor);
    childrenChanged();
    leave(before);
}

std::vector<OrvaForEachView::Row> OrvaForEachView::rowsFor(const QList<OrvaForEach::Item>& items)
{
    QStringList before;
    for (const Row& row : m_rows)
        before.append(row.key);
    QStringList after;
    for (const OrvaForEach::Item& item : items)
        after.append(item.key);

    std::vector<Row> rows;
    const QList<qsizetype> kept = keptIndices(before, after);
    for (qsizetype index = 0; index < items.size(); ++index) {
        if (kept.at(index) >= 0) {
            rows.push_back(m_rows.at(static_cast<std::size_t>(kept.at(index))));
        } else if (QWidget* widget = items.at(index).view.makeWidget()) {
            widget->installEventFilter(this);
            rows.push_back({items.at(index).key, widget,
                            new OrvaDividerView(OrvaDividerView::Reach::insetToLabels, this)});
        }
    }
    return rows;
}

void OrvaForEachView::layOutRows()
{
    while (const std::unique_ptr<QLayoutItem> item{m_stack->takeAt(0)}) {
    }
    for (const Row& row : m_rows) {
        m_stack->addWidget(row.divider);
        m_stack->addWidget(row.widget);
        if (!isLeftOut(*row.widget))
            row.widget->show();
    }
}

// New widgets stand at the end of the window's chain at first.
void OrvaForEachView::orderTabs(QWidget* anchor) const
{
    for (const Row& row : m_rows)
        anchor = chainTabs(anchor, focusPlaces(*row.widget));
}

QWidget* OrvaForEachView::tabStopBefore() const
{
    const QList<QWidget*> own = focusPlaces(*this);
    const QWidget* const first = own.isEmpty() ? this : own.constFirst();
    for (QWidget* step = first->previousInFocusChain(); step != first && !step->isWindow();
         step = step->previousInFocusChain()) {
        if (step->focusPolicy() != Qt::NoFocus && !step->focusProxy() && !isAncestorOf(step))
            return step;
    }
    return nullptr;
}

bool OrvaForEachView::keeps(const Row& row) const
{
    return std::any_of(m_rows.begin(), m_rows.end(),
                       [&row](const Row& present) { return present.widget == row.widget; });
}

void OrvaForEachView::leave(const std::vector<Row>& before)
{
    std::size_t place = 0;
    for (const Row& row : before) {
        if (keeps(row)) {
            ++place;
            continue;
        }
        moveFocus(*row.widget, place);
        drop(row);
    }
}

/// Moves the focus to the row that takes the place of the removed one, or to what follows the list.
void OrvaForEachView::moveFocus(QWidget& leaving, std::size_t place)
{
    QWidget* const focus = QApplication::focusWidget();
    if (!focus || (focus != &leaving && !leaving.isAncestorOf(focus)))
        return;
    QWidget* target = nullptr;
    if (!m_rows.empty())
        target = counterpart(leaving, focus, *m_rows.at(std::min(place, m_rows.size() - 1)).widget);
    if (!target)
        target = nextOutside(*this);
    if (target)
        handFocusOn(focus, *target);
}

// Often a button in the row removes it, and the button's events aren't over yet.
void OrvaForEachView::drop(const Row& row)
{
    row.widget->removeEventFilter(this);
    row.widget->hide();
    row.widget->deleteLater();
    delete row.divider;
}

bool OrvaForEachView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
        childrenChanged();
    return OrvaThemed::eventFilter(watched, event);
}

bool OrvaForEachView::event(QEvent* event)
{
    if (event->type() == QEvent::ParentChange || event->type() == QEvent::Polish)
        settleIn();
    return OrvaThemed::event(event);
}

void OrvaForEachView::settleIn()
{
    const QWidget* host = parentWidget();
    while (dynamic_cast<const OrvaForEachView*>(host) || dynamic_cast<const OrvaIfView*>(host))
        host = host->parentWidget();
    m_divided = !host || dynamic_cast<const OrvaDividedStackView*>(host);
    m_stack->setSpacing(m_divided || !host->layout() ? 0 : host->layout()->spacing());
    childrenChanged();
}

void OrvaForEachView::childrenChanged()
{
    bool anyShown = false;
    for (const Row& row : m_rows) {
        const bool shown = !isLeftOut(*row.widget);
        setLeftOut(*row.divider, !m_divided || !shown || !anyShown);
        anyShown = anyShown || shown;
    }
    setLeftOut(*this, !anyShown);
}

} // namespace orvane
