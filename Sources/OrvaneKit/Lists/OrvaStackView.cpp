#include "OrvaneKit/Lists/OrvaStackView.h"

#include "OrvaneKit/Model/OrvaBindings.h"

#include <QVBoxLayout>

#include <algorithm>

namespace orvane {

bool isLeftOut(const QWidget& widget)
{
    return widget.testAttribute(Qt::WA_WState_ExplicitShowHide) && widget.testAttribute(Qt::WA_WState_Hidden);
}

void setLeftOut(QWidget& widget, bool leftOut)
{
    if (leftOut == isLeftOut(widget))
        return;
    if (leftOut)
        widget.hide();
    else if (widget.isWindow())
        widget.setAttribute(Qt::WA_WState_ExplicitShowHide, false);
    else
        widget.show();
}

OrvaDividerView::OrvaDividerView(Reach reach, QWidget* parent)
    : OrvaThemed(parent), m_inset(reach == Reach::insetToLabels ? Orva::rowH : 0)
{
    setFixedHeight(1);
}

void OrvaDividerView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintOrvaDivider(painter, QPointF(m_inset, 0.5), QPointF(width() - m_inset, 0.5));
}

OrvaGroupView::OrvaGroupView(int spacing) : m_stack(new QVBoxLayout(this))
{
    m_stack->setContentsMargins(0, 0, 0, 0);
    m_stack->setSpacing(spacing);
}

QWidget* OrvaGroupView::add(const AnyView& view)
{
    QWidget* child = view.makeWidget();
    if (!child)
        return nullptr;
    insert(*child);
    m_members.append(child);
    child->installEventFilter(this);
    childrenChanged();
    return child;
}

void OrvaGroupView::insert(QWidget& child)
{
    m_stack->addWidget(&child);
}

bool OrvaGroupView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
        childrenChanged();
    return OrvaThemed::eventFilter(watched, event);
}

bool OrvaGroupView::showsAny() const
{
    return std::any_of(m_members.begin(), m_members.end(),
                       [](const QWidget* child) { return !isLeftOut(*child); });
}

void OrvaGroupView::childrenChanged()
{
    setLeftOut(*this, !showsAny());
}

OrvaDividedStackView::OrvaDividedStackView(const QList<AnyView>& content)
{
    for (const AnyView& view : content)
        add(view);
    childrenChanged();
}

void OrvaDividedStackView::insert(QWidget& child)
{
    auto* divider =
        members().isEmpty() ? nullptr : new OrvaDividerView(OrvaDividerView::Reach::insetToLabels, this);
    m_dividers.append(divider);
    if (divider)
        stack().addWidget(divider);
    stack().addWidget(&child);
}

void OrvaDividedStackView::childrenChanged()
{
    bool anyAbove = false;
    for (int index = 0; index < members().size(); ++index) {
        const bool shown = !isLeftOut(*members().at(index));
        if (OrvaDividerView* divider = m_dividers.at(index))
            setLeftOut(*divider, !shown || !anyAbove);
        anyAbove = anyAbove || shown;
    }
    OrvaGroupView::childrenChanged();
}

OrvaCardView::OrvaCardView(const AnyView& content)
{
    add(content);
    childrenChanged();
}

void OrvaCardView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(orvaColor(OrvaColor::cardStroke), 0.5));
    painter.setBrush(orvaColor(OrvaColor::cardFill));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Orva::cardCorner,
                            Orva::cardCorner);
}

OrvaIfView::OrvaIfView(const Live<bool>& condition, const AnyView& content)
{
    add(content);
    follow(m_cancellables, condition, [this](bool holds) {
        m_holds = holds;
        childrenChanged();
    });
}

void OrvaIfView::childrenChanged()
{
    setLeftOut(*this, !m_holds || !showsAny());
}

} // namespace orvane
