#include "OrvaneKit/Lists/OrvaPageView.h"

#include "OrvaneKit/Lists/OrvaScrollBarView.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Model/OrvaPageMetrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace orvane {

namespace {

class Veil final : public OrvaThemed<QWidget> {
public:
    explicit Veil(QWidget* parent) : OrvaThemed(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(rect(), faded(orvaColor(OrvaColor::window), 1 - Orva::disabledDim));
    }
};

class Ground final : public OrvaThemed<QWidget> {
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), orvaColor(OrvaColor::window)); }
};

} // namespace

OrvaDimmedView::OrvaDimmedView(const AnyView& content, const Live<bool>& enabled)
    : m_content(content.makeWidget())
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_content);
    m_veil = new Veil(this);
    follow(m_cancellables, enabled, [this](bool on) {
        m_content->setEnabled(on);
        m_veil->setVisible(!on);
        m_veil->raise();
    });
}

void OrvaDimmedView::resizeEvent(QResizeEvent*)
{
    m_veil->setGeometry(rect());
}

OrvaPageView::OrvaPageView(const Live<bool>& contentEnabled, const AnyView& header, const AnyView& banner,
                           const AnyView& content)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setVerticalScrollBar(new OrvaScrollBarView);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The scroll bar is always there, in the page's padding: columns are equally wide on long pages and on
    // short ones.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    // The page itself is no stop of Tab, which goes on to the controls. After a click keys can scroll it.
    setFocusPolicy(Qt::ClickFocus);

    auto* column = new QWidget;
    constexpr int overhang = OrvaPageMetrics::overhang;
    column->setMaximumWidth(static_cast<int>(Orva::pageWidth) + overhang);
    auto* lines = new QVBoxLayout(column);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(static_cast<int>(Orva::sectionGap));
    for (const AnyView& part : {header, banner}) {
        if (QWidget* widget = part.makeWidget())
            lines->addWidget(widget);
    }
    if (content) {
        auto* line = new QHBoxLayout;
        line->setContentsMargins(0, 0, 0, 0);
        line->setSpacing(0);
        line->addWidget(new OrvaDimmedView(content, contentEnabled), 1);
        line->addSpacing(overhang);
        lines->addLayout(line);
    }
    lines->addStretch(1);

    auto* ground = new Ground;
    auto* frame = new QHBoxLayout(ground);
    constexpr int padding = static_cast<int>(Orva::pagePadding);
    constexpr int scrollBar = OrvaScrollBarView::thickness;
    if (layoutDirection() == Qt::RightToLeft)
        frame->setContentsMargins(padding - overhang, padding, padding - scrollBar, padding);
    else
        frame->setContentsMargins(padding, padding, padding - scrollBar - overhang, padding);
    // The column takes all the width it may before the sides get any.
    frame->addStretch(0);
    frame->addWidget(column, 1);
    frame->addStretch(0);
    setWidget(ground);
}

} // namespace orvane
