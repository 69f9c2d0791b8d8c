#include "OrvaneKit/Model/OrvaControls.h"

#include "OrvaneKit/Controls/OrvaIconButtonView.h"
#include "OrvaneKit/Controls/OrvaRadioView.h"
#include "OrvaneKit/Controls/OrvaSelectableTextView.h"
#include "OrvaneKit/Controls/OrvaTextView.h"
#include "OrvaneKit/Lists/OrvaForEachView.h"
#include "OrvaneKit/Lists/OrvaStackView.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QHBoxLayout>

#include <algorithm>

namespace orvane {

namespace {

constexpr int captionSymbol = 16;
constexpr int captionGap = 8;

/// A symbol as high as a line of text, in the middle of it.
class LineSymbolView final : public OrvaThemed<QWidget> {
public:
    LineSymbolView(QString name, OrvaFont font, OrvaColor color)
        : m_name(std::move(name)), m_font(font), m_color(color)
    {
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        return QSize(captionSymbol, std::max(captionSymbol, QFontMetrics(orvaFont(m_font)).height()));
    }

protected:
    void themeChanged() override { updateGeometry(); }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setOpacity(ownOpacity());
        paintOrvaSymbol(painter, m_name, rect(), orvaColor(m_color));
    }

private:
    QString m_name;
    OrvaFont m_font;
    OrvaColor m_color;
};

/// Left out together with its text.
class CaptionRowView final : public QWidget {
public:
    explicit CaptionRowView(const OrvaCaptionRow& row)
    {
        constexpr int h = static_cast<int>(Orva::rowH);
        constexpr int v = static_cast<int>(Orva::rowV);
        auto* line = new QHBoxLayout(this);
        line->setContentsMargins(h, v, h, v);
        line->setSpacing(captionGap);
        if (row.systemImage)
            line->addWidget(new LineSymbolView(*row.systemImage, OrvaFont::caption, row.color), 0,
                            Qt::AlignTop);
        line->addWidget(new OrvaTextView(row.text, OrvaFont::caption, row.color), 1);
        follow(m_cancellables, row.text, [this](const QString& text) { setLeftOut(*this, text.isEmpty()); });
    }

private:
    Cancellables m_cancellables;
};

} // namespace

QList<AnyView> OrvaForEach::children() const
{
    QList<AnyView> views;
    for (const Item& item : content.get()) {
        if (item.view)
            views.append(item.view);
    }
    return views;
}

QWidget* makeOrvaWidget(const OrvaRadioGroup& group)
{
    return new OrvaRadioGroupView(group);
}

QWidget* makeOrvaWidget(const OrvaCaptionRow& row)
{
    return new CaptionRowView(row);
}

QWidget* makeOrvaWidget(const OrvaSelectableText& text)
{
    return new OrvaSelectableTextView(text.text);
}

QWidget* makeOrvaWidget(const OrvaIconButton& button)
{
    return new OrvaIconButtonView(button);
}

QWidget* makeOrvaWidget(const OrvaSpacer&)
{
    auto* spacer = new QWidget;
    spacer->setAttribute(Qt::WA_TransparentForMouseEvents);
    return spacer;
}

QWidget* makeOrvaWidget(const OrvaForEach& list)
{
    return new OrvaForEachView(list.content);
}

} // namespace orvane
