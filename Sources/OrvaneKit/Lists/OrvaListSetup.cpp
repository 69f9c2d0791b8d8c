#include "OrvaneKit/Lists/OrvaListSetup.h"

#include "OrvaneKit/Lists/OrvaScrollBarView.h"

#include <QListView>

namespace orvane {

void setUpOrvaList(QListView& list, OrvaColor ground)
{
    list.setVerticalScrollBar(new OrvaScrollBarView(ground));
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.setVerticalScrollMode(QListView::ScrollPerPixel);
    list.setFrameShape(QFrame::NoFrame);
    list.setEditTriggers(QListView::NoEditTriggers);
    list.setSelectionMode(QListView::SingleSelection);
    list.setMouseTracking(true);
    list.viewport()->setAttribute(Qt::WA_Hover);
}

} // namespace orvane
