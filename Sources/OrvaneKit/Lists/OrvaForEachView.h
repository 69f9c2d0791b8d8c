// A stack of views that follows a list: a view whose key occurs again is kept.
#pragma once

#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QWidget>

#include <vector>

class QVBoxLayout;

namespace orvane {

class OrvaDividerView;

/// Returns for each key of `after` the index in `before` of the row that it keeps, or -1. Where keys are
/// equal, the nth keeps the nth.
QList<qsizetype> keptIndices(const QStringList& before, const QStringList& after);

/// In a stack with dividers it represents its items, and has dividers between them itself; elsewhere it takes
/// the spacing of the stack that contains it.
class OrvaForEachView final : public OrvaThemed<QWidget> {
public:
    explicit OrvaForEachView(const Live<QList<OrvaForEach::Item>>& content);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;

private:
    struct Row {
        QString key;
        QWidget* widget;
        OrvaDividerView* divider; // above the widget
    };

    void showItems(const QList<OrvaForEach::Item>& items);
    std::vector<Row> rowsFor(const QList<OrvaForEach::Item>& items);
    void layOutRows();
    void orderTabs(QWidget* anchor) const;
    [[nodiscard]] QWidget* tabStopBefore() const;
    void leave(const std::vector<Row>& before);
    void moveFocus(QWidget& leaving, std::size_t place);
    void drop(const Row& row);
    [[nodiscard]] bool keeps(const Row& row) const;
    void settleIn();
    void childrenChanged();

    QVBoxLayout* m_stack;
    std::vector<Row> m_rows;
    bool m_divided = true;
    Cancellables m_cancellables;
};

} // namespace orvane
