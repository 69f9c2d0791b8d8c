// System symbols: pictures of one colour by name, from the program's own family.
#pragma once

#include "Platform/TemplateImage.h"

namespace orvane {

class SystemSymbol {
public:
    /// The width of the strokes. Filled shapes look the same in both.
    enum class Weight { regular, semibold };

    /// Returns a template picture of the named symbol in a square of `side` points. An unknown name gives a
    /// picture that draws nothing and logs a line when it is drawn for the first time.
    static TemplateImage image(const QString& name, const QString& accessibilityDescription = {},
                               double side = 18, Weight weight = Weight::regular);
    static bool exists(const QString& name);
};

} // namespace orvane
