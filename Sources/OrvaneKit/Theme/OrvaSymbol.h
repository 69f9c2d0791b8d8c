// System symbols on widgets: tinted when painted, on whole pixels of the screen.
#pragma once

#include "OrvaneKit/Theme/OrvaTheme.h"
#include "OrvaneKit/Theme/OrvaThemed.h"
#include "OrvaneKit/Theme/SystemSymbol.h"

#include <QPixmap>
#include <QWidget>

class QPainter;

namespace orvane {

/// Returns a symbol of `side` points in one colour.
QPixmap orvaSymbolPixmap(const QString& name, double side, const QColor& color, double devicePixelRatio,
                         SystemSymbol::Weight weight = SystemSymbol::Weight::regular);

/// Draws the symbol into the middle of `rect`, as large as its shorter side.
void paintOrvaSymbol(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color,
                     SystemSymbol::Weight weight = SystemSymbol::Weight::regular);

class OrvaSymbolView final : public OrvaThemed<QWidget> {
public:
    OrvaSymbolView(QString name, double side, OrvaColor color, QWidget* parent = nullptr);

    void setColor(OrvaColor color);
    [[nodiscard]] QSize sizeHint() const override { return QSize(m_side, m_side); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_name;
    int m_side;
    OrvaColor m_color;
};

} // namespace orvane
