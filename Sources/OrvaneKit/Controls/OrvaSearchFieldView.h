// A field that narrows a list as the user types.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QLineEdit>

namespace orvane {

class OrvaSearchFieldView final : public OrvaControl<QLineEdit> {
public:
    explicit OrvaSearchFieldView(const QString& name);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] QRectF symbolRect() const;
    /// The place where a click empties the field; null while it is empty.
    [[nodiscard]] QRectF clearRect() const;

    [[nodiscard]] bool isMirrored() const { return layoutDirection() == Qt::RightToLeft; }
};

} // namespace orvane
