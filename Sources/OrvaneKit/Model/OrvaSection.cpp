#include "OrvaneKit/Model/OrvaSection.h"

#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaLayout.h"

#include <QVBoxLayout>

namespace orvane {

namespace {

// Text beside a card is indented a little from the card's edge.
constexpr int textInset = 4;
constexpr int headingGap = 8;
constexpr int symbolGap = 6;
constexpr double headingSymbol = 15;

/// Text with the inset of headings. Left out together with its text.
class InsetTextView final : public OrvaGroupView {
public:
    explicit InsetTextView(const AnyView& text)
    {
        layout()->setContentsMargins(textInset, 0, textInset, 0);
        add(text);
    }
};

AnyView heading(const QString& title, const std::optional<QString>& symbol)
{
    OrvaBox line{.spacing = symbolGap, .margins = QMargins(textInset, 0, textInset, 0), .content = {}};
    if (symbol)
        line.content.append(AnyView(OrvaSymbolMark{*symbol, headingSymbol, OrvaColor::secondary}));
    line.content.append(
        OrvaBoxPart::filling(OrvaText{title, OrvaFont::smallCaptionSemibold, OrvaColor::secondary}));
    return line;
}

} // namespace

QWidget* makeOrvaWidget(const DividedVStack& stack)
{
    return new OrvaDividedStackView(stack.content);
}

QWidget* makeOrvaWidget(const OrvaCard& card)
{
    return new OrvaCardView(DividedVStack{card.content});
}

AnyView OrvaSection::body() const
{
    OrvaBox column{.axis = OrvaBox::Axis::column, .spacing = headingGap, .content = {}};
    if (title && !title->isEmpty())
        column.content.append(heading(*title, systemImage));
    column.content.append(AnyView(OrvaCard{content}));
    if (footnote)
        column.content.append(AnyView(OrvaCaptionText{*footnote}));
    return column;
}

QWidget* makeOrvaWidget(const OrvaCalloutText& text)
{
    return new InsetTextView(OrvaText{text.text, OrvaFont::callout, OrvaColor::secondary});
}

QWidget* makeOrvaWidget(const OrvaCaptionText& text)
{
    return new InsetTextView(OrvaText{text.text, OrvaFont::caption, OrvaColor::secondary});
}

QWidget* makeOrvaWidget(const OrvaPane& pane)
{
    auto* group = new OrvaGroupView(static_cast<int>(Orva::sectionGap));
    for (const AnyView& view : pane.content)
        group->add(view);
    return group;
}

} // namespace orvane
