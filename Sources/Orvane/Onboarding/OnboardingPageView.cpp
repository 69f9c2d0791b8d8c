#include "Orvane/Onboarding/OnboardingPageView.h"

#include "OrvaneKit/Controls/OrvaBalancedTextView.h"
#include "OrvaneKit/Lists/OrvaScrollBarView.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int pageEdge = 32;
constexpr int titleGap = 8;
constexpr int contentGap = 24;

OrvaText titleOf(const OnboardingPage& page)
{
    return {page.title, OrvaFont::title, OrvaColor::primary};
}

OrvaText textOf(const OnboardingPage& page)
{
    return {page.text, OrvaFont::body, OrvaColor::secondary};
}

} // namespace

QList<AnyView> OnboardingPage::children() const
{
    return {titleOf(*this), textOf(*this), content};
}

QWidget* makeOnboardingGround(QWidget* column, double width)
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
    column->setMaximumWidth(static_cast<int>(width));
    // The column takes all that it may before the sides get anything.
    frame->addStretch(0);
    frame->addWidget(column, 1);
    frame->addStretch(0);
    area->setWidget(ground);
    // What is behind shows through, so that pages can fade into each other.
    ground->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    return area;
}

QWidget* makeOrvaWidget(const OnboardingPage& page)
{
    auto* column = new QWidget;
    auto* lines = new QVBoxLayout(column);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(0);
    lines->addStretch(2);
    lines->addWidget(new OrvaBalancedTextView(titleOf(page), Qt::AlignHCenter));
    lines->addSpacing(titleGap);
    lines->addWidget(new OrvaBalancedTextView(textOf(page), Qt::AlignHCenter));
    lines->addSpacing(contentGap);
    lines->addWidget(page.content.makeWidget());
    lines->addStretch(3);
    return makeOnboardingGround(column, page.width);
}

} // namespace orvane
