#include "Orvane/Onboarding/OnboardingPageView.h"

#include "OrvaneKit/Lists/OrvaScrollBarView.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaLayout.h"

#include <QHBoxLayout>
#include <QScrollArea>

namespace orvane {

namespace {

constexpr int pageEdge = 32;
constexpr int titleGap = 8;
constexpr int contentGap = 24;

} // namespace

AnyView OnboardingPage::body() const
{
    return OnboardingGround{
        width, OrvaBox{.axis = OrvaBox::Axis::column,
                       .content = {OrvaBoxPart::rest(2),
                                   OrvaText{title, OrvaFont::title, OrvaColor::primary,
                                            OrvaTextLines::balanced, Qt::AlignHCenter},
                                   OrvaBoxPart::gap(titleGap),
                                   OrvaText{text, OrvaFont::body, OrvaColor::secondary,
                                            OrvaTextLines::balanced, Qt::AlignHCenter},
                                   OrvaBoxPart::gap(contentGap), content, OrvaBoxPart::rest(3)}}};
}

QWidget* makeOrvaWidget(const OnboardingGround& page)
{
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setVerticalScrollBar(new OrvaScrollBarView);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);

    auto* ground = new QWidget;
    auto* frame = new QHBoxLayout(ground);
    frame->setContentsMargins(pageEdge, pageEdge, pageEdge, pageEdge);
    QWidget* const column = page.column.makeWidget();
    column->setMaximumWidth(static_cast<int>(page.width));
    // The column takes all the width it may before the sides get any.
    frame->addStretch(0);
    frame->addWidget(column, 1);
    frame->addStretch(0);
    area->setWidget(ground);
    // The ground is transparent, so that pages can fade into each other.
    ground->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    return area;
}

} // namespace orvane
