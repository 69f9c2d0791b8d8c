#include "Orvane/Navigation/OrvaSplitView.h"

#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int headerSide = 16; // points, around the header
constexpr int headerEnd = 10;
constexpr int widestSidebar = 360;
constexpr int listEnd = 10; // below the last row

class LineView final : public OrvaThemed<QSplitterHandle> {
public:
    using OrvaThemed::OrvaThemed;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), orvaColor(OrvaColor::window));
        painter.fillRect(rect(), orvaColor(OrvaColor::divider));
    }
};

class GroundView final : public OrvaThemed<QWidget> {
public:
    explicit GroundView(OrvaColor color) : m_color(color) {}

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), orvaColor(m_color)); }

private:
    OrvaColor m_color;
};

QWidget* makeSidebar(const OrvaSplit& split)
{
    auto* column = new GroundView(OrvaColor::sidebar);
    auto* lines = new QVBoxLayout(column);
    lines->setContentsMargins(0, 0, 0, listEnd);
    lines->setSpacing(0);
    if (QWidget* header = split.header.makeWidget()) {
        auto* frame = new QVBoxLayout;
        frame->setContentsMargins(headerSide, headerEnd, headerSide, headerEnd);
        frame->addWidget(header, 0, Qt::AlignLeft);
        lines->addLayout(frame);
    }
    if (QWidget* list = split.sidebar.makeWidget())
        lines->addWidget(list, 1);
    column->setMinimumWidth(static_cast<int>(split.minimumWidth));
    column->setMaximumWidth(widestSidebar);
    return column;
}

} // namespace

OrvaSplitView::OrvaSplitView(const OrvaSplit& split)
{
    setHandleWidth(1);
    setChildrenCollapsible(false);
    addWidget(makeSidebar(split));
    if (QWidget* detail = split.detail.makeWidget())
        addWidget(detail);
    setStretchFactor(0, 0);
    setStretchFactor(1, 1);
    // A splitter puts each new part below the others in the stack, and assistive technology reads the lowest
    // first.
    widget(0)->lower();
    // The page gets all the rest of the width.
    setSizes({static_cast<int>(split.idealWidth), 1 << 16});
}

QSplitterHandle* OrvaSplitView::createHandle()
{
    return new LineView(orientation(), this);
}

} // namespace orvane
