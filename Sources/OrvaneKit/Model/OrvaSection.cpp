#include "OrvaneKit/Model/OrvaSection.h"

#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace orvane {

namespace {

// Text beside a card is set in a little from the card's edge.
constexpr int textInset = 4;
constexpr int headingGap = 8;
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

/// A text as a view of its own, for the stacks that keep up with views.
struct PlainText {
    Live<QString> text;
    OrvaFont font;
};

QWidget* makeOrvaWidget(const PlainText& plain)
{
    return new OrvaTextView(plain.text, plain.font, OrvaColor::secondary);
}

QWidget* makeHeading(const QString& title, const std::optional<QString>& symbol)
{
    auto* heading = new QWidget;
    auto* line = new QHBoxLayout(heading);
    line->setContentsMargins(textInset, 0, textInset, 0);
    line->setSpacing(6);
    if (symbol)
        line->addWidget(new OrvaSymbolView(*symbol, headingSymbol, OrvaColor::secondary));
    line->addWidget(new OrvaTextView(title, OrvaFont::smallCaptionSemibold, OrvaColor::secondary), 1);
    return heading;
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

QWidget* makeOrvaWidget(const OrvaSection& section)
{
    auto* widget = new QWidget;
    auto* lines = new QVBoxLayout(widget);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(headingGap);
    if (section.title && !section.title->isEmpty())
        lines->addWidget(makeHeading(*section.title, section.systemImage));
    lines->addWidget(makeOrvaWidget(OrvaCard{section.content}));
    if (section.footnote)
        lines->addWidget(new InsetTextView(PlainText{*section.footnote, OrvaFont::caption}));
    return widget;
}

QWidget* makeOrvaWidget(const OrvaCalloutText& text)
{
    return new InsetTextView(PlainText{text.text, OrvaFont::callout});
}

QWidget* makeOrvaWidget(const OrvaCaptionText& text)
{
    return new InsetTextView(PlainText{text.text, OrvaFont::caption});
}

QWidget* makeOrvaWidget(const OrvaPane& pane)
{
    auto* group = new OrvaGroupView(static_cast<int>(Orva::sectionGap));
    for (const AnyView& view : pane.content)
        group->add(view);
    return group;
}

} // namespace orvane
