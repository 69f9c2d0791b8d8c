#include "Orvane/Home/OrvaRowSymbol.h"

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QPainter>
#include <QWidget>

namespace orvane {

namespace {

class RowSymbolView final : public OrvaThemed<QWidget> {
public:
    explicit RowSymbolView(const OrvaRowSymbol& symbol)
    {
        const int side = qRound(symbol.size);
        setFixedSize(side, side);
        follow(m_cancellables, symbol.systemImage, [this](const QString& name) {
            m_name = name;
            update();
        });
        follow(m_cancellables, symbol.color, [this](OrvaColor color) {
            m_color = color;
            update();
        });
        follow(m_cancellables, symbol.meaning,
               [this](const QString& meaning) { setAccessibleName(meaning); });
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        paintOrvaSymbol(painter, m_name, rect(), orvaColor(m_color));
    }

private:
    QString m_name;
    OrvaColor m_color = OrvaColor::secondary;
    Cancellables m_cancellables;
};

} // namespace

QWidget* makeOrvaWidget(const OrvaRowSymbol& symbol)
{
    return new RowSymbolView(symbol);
}

} // namespace orvane
