#include "Capabilities/SnapZones/Layouts/SnapLayoutGridView.h"

#include "Capabilities/SnapZones/Layouts/SnapLayoutCellView.h"
#include "OrvaneKit/Model/OrvaLayout.h"

#include <QGridLayout>

#include <algorithm>

namespace orvane {

namespace {

constexpr int margin = 16; // around the heading and what the cells draw
constexpr int headlineGap = 12;
constexpr QSize cellSize = SnapLayoutCellView::box + QSize(2 * orvaRingMargin, 2 * orvaRingMargin);

QGridLayout* makeGrid(const SnapLayoutGridView::Columns& columns)
{
    // A cell's widget is larger than what it draws, by the room for its focus ring, so the space between the
    // widgets is less than between the columns.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(qRound(columns.width + columns.spacing) - cellSize.width());
    grid->setVerticalSpacing(qRound(columns.spacing) - 2 * orvaRingMargin);
    return grid;
}

/// All cells are as wide as the longest title needs.
void giveEqualWidths(const QList<SnapLayoutCellView*>& cells)
{
    int widest = 0;
    for (const SnapLayoutCellView* cell : cells)
        widest = std::max(widest, cell->neededWidth());
    for (SnapLayoutCellView* cell : cells)
        cell->setWidth(widest);
}

} // namespace

QWidget* makeOrvaWidget(const SnapLayoutGridView& grid)
{
    auto* view = new QWidget;
    view->setAccessibleName(SnapLayoutGridView::headline());
    auto* stack = new QVBoxLayout(view);
    constexpr int side = margin - orvaRingMargin;
    stack->setContentsMargins(side, margin, side, side);
    stack->setSpacing(headlineGap - orvaRingMargin);
    stack->addWidget(makeOrvaWidget(
        OrvaInset{.side = orvaRingMargin,
                  .content = OrvaText{.text = SnapLayoutGridView::headline(), .font = OrvaFont::headline}}));
    QGridLayout* cells = makeGrid(grid.columns);
    QList<SnapLayoutCellView*> buttons;
    for (const SnapZone zone : grid.zones) {
        auto* button = new SnapLayoutCellView(zone);
        // The callback may end this view, or set another one, so a copy is called.
        QObject::connect(button, &QPushButton::clicked, button, [model = grid.model, zone] {
            const auto choose = model->onSelect;
            if (choose)
                choose(zone);
        });
        const int index = static_cast<int>(buttons.size());
        cells->addWidget(button, index / grid.columns.count, index % grid.columns.count);
        buttons.append(button);
    }
    giveEqualWidths(buttons);
    stack->addLayout(cells);
    return view;
}

} // namespace orvane
