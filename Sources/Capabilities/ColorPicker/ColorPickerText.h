// The texts of the colour picker: ColorPickerText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct ColorPickerText {
    Q_DECLARE_TR_FUNCTIONS(ColorPickerText)
};

} // namespace orvane
