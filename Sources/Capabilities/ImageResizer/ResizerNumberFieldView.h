// A small field for a whole number. Each number that is typed is set at once.
#pragma once

#include "Capabilities/ImageResizer/ResizerRows.h"
#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QLineEdit>

namespace orvane {

class ResizerNumberFieldView final : public OrvaControl<QLineEdit> {
public:
    explicit ResizerNumberFieldView(const ResizerNumberField& field);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void showNumber(int number);

    OrvaBoundValue<int> m_value;
};

} // namespace orvane
