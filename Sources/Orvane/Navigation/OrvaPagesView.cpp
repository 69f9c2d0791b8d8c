#include "Orvane/Navigation/OrvaPagesView.h"

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaFocus.h"
#include "OrvaneKit/Theme/OrvaThemed.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"

#include <QApplication>
#include <QLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QShowEvent>
#include <QVBoxLayout>

namespace orvane {

namespace {

QVBoxLayout* makeFrame(QWidget& frame, QWidget* content)
{
    auto* layout = new QVBoxLayout(&frame);
    layout->setContentsMargins(0, 0, 0, 0);
    if (content)
        layout->addWidget(content);
    return layout;
}

/// Brings the sizes of a widget that was just made up to date, from the outside in.
void layOut(QWidget& widget)
{
    QCoreApplication::sendPostedEvents(&widget, QEvent::LayoutRequest);
    if (QLayout* layout = widget.layout())
        layout->activate();
    for (QObject* child : widget.children()) {
        if (child->isWidgetType())
            layOut(static_cast<QWidget&>(*child));
    }
}

} // namespace

OrvaKeyedView::OrvaKeyedView(const OrvaKeyed& keyed)
    : m_makeContent(keyed.content), m_layout(makeFrame(*this, nullptr))
{
    follow(m_cancellables, keyed.key, [this](const QString& key) { show(key); });
}

void OrvaKeyedView::show(const QString& key)
{
    if (m_key == key)
        return;
    m_key = key;
    const QPointer<QWidget> former = m_page;
    m_page = m_makeContent(key).makeWidget();
    if (m_page) {
        m_layout->addWidget(m_page);
        if (former)
            m_page->show();
    }
    if (!former)
        return;
    const QWidget* focus = QApplication::focusWidget();
    if (focus && (focus == former || former->isAncestorOf(focus)))
        moveFocus();
    // Often a button on the page changes it, and the button's events aren't over yet.
    former->hide();
    m_layout->removeWidget(former);
    former->deleteLater();
}

void OrvaKeyedView::moveFocus() const
{
    if (QWidget* const target = m_page ? firstTabStop(*m_page) : nullptr)
        handFocusOn(QApplication::focusWidget(), *target);
}

OrvaAppearView::OrvaAppearView(std::function<void()> onAppear, const AnyView& content)
    : m_onAppear(std::move(onAppear))
{
    QWidget* const widget = content.makeWidget();
    makeFrame(*this, widget);
    if (widget)
        setSizePolicy(widget->sizePolicy());
}

void OrvaAppearView::appeared()
{
    if (m_onAppear)
        m_onAppear();
}

// A window that was minimized kept its content visible.
void OrvaAppearView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        appeared();
}

void OrvaAppearView::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        disappeared();
}

OrvaTickerView::OrvaTickerView(const OrvaTicker& ticker)
    : OrvaAppearView(ticker.onAppear, ticker.content), m_interval(ticker.interval), m_onTick(ticker.onTick)
{
}

OrvaTickerView::~OrvaTickerView() = default;

void OrvaTickerView::appeared()
{
    m_timer = platform().mainRunLoop.scheduleTimer(m_interval, RunLoop::Repeats::yes, m_onTick);
    OrvaAppearView::appeared();
}

void OrvaTickerView::disappeared()
{
    m_timer.reset();
}

OrvaScrollReaderView::OrvaScrollReaderView(const OrvaScrollReader& reader) : m_anchor(reader.anchor)
{
    makeFrame(*this, reader.content.makeWidget());
    for (Subscription& subscription : reader.requests.onChange([this] { scroll(); }))
        m_cancellables.push_back(std::move(subscription));
}

void OrvaScrollReaderView::scroll()
{
    const auto* page = findChild<QScrollArea*>();
    auto* anchor = findChild<QWidget*>(m_anchor);
    if (!page || !anchor || !page->widget())
        return;
    layOut(*window());
    page->verticalScrollBar()->setValue(anchor->mapTo(page->widget(), QPoint()).y() -
                                        static_cast<int>(Orva::pagePadding));
    QWidget* const stop = firstTabStop(*anchor);
    if (stop && isUsedByKeyboard(QApplication::focusWidget()))
        stop->setFocus(Qt::TabFocusReason);
}

} // namespace orvane
