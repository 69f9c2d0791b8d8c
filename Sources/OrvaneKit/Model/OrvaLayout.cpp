#include "OrvaneKit/Model/OrvaLayout.h"

#include "OrvaneKit/Controls/OrvaBalancedTextView.h"
#include "OrvaneKit/Controls/OrvaTextButtonView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QVBoxLayout>

namespace orvane {

namespace {

class EnabledView final : public QWidget {
public:
    explicit EnabledView(const OrvaEnabled& enabled)
    {
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        QWidget* const content = enabled.content.makeWidget();
        if (!content)
            return;
        layout->addWidget(content);
        follow(m_cancellables, enabled.condition, [content](bool on) { content->setEnabled(on); });
    }

private:
    Cancellables m_cancellables;
};

} // namespace

QWidget* makeOrvaWidget(const OrvaText& text)
{
    if (text.lines == OrvaTextLines::balanced)
        return new OrvaBalancedTextView(text, text.alignment);
    auto* view = new OrvaTextView(text.text, text.font, text.color);
    view->setAlignment(text.alignment);
    return view;
}

QWidget* makeOrvaWidget(const OrvaEnabled& enabled)
{
    return new EnabledView(enabled);
}

QWidget* makeOrvaWidget(const OrvaInset& inset)
{
    return makeOrvaWidget(OrvaBox{.margins = QMargins(static_cast<int>(inset.side), 0, 0, 0),
                                  .content = {OrvaBoxPart::filling(inset.content)}});
}

QWidget* makeOrvaWidget(const OrvaSymbolMark& mark)
{
    return new OrvaSymbolView(mark.systemImage, mark.side, mark.color);
}

QWidget* makeOrvaWidget(const OrvaHStack& stack)
{
    OrvaBox line{.spacing = stack.spacing, .content = {}, .endsFree = true};
    for (const AnyView& view : stack.content) {
        const auto fill = view.as<OrvaSpacer>() ? OrvaBoxPart::Fill::all : OrvaBoxPart::Fill::none;
        line.content.append(OrvaBoxPart{view, Qt::AlignVCenter, fill});
    }
    return makeOrvaWidget(line);
}

QWidget* makeOrvaWidget(const OrvaVStack& stack)
{
    auto* widget = new QWidget;
    auto* lines = new QVBoxLayout(widget);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(static_cast<int>(stack.spacing));
    for (const AnyView& view : stack.content) {
        QWidget* child = view.makeWidget();
        if (!child)
            continue;
        const bool takesItsOwn = child->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed;
        lines->addWidget(child, 0, takesItsOwn ? Qt::AlignLeft : Qt::Alignment());
    }
    return widget;
}

QWidget* makeOrvaWidget(const OrvaTextButton& button)
{
    return new OrvaTextButtonView(button);
}

} // namespace orvane
