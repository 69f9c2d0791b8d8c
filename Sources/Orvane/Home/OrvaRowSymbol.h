// A symbol at the head of a row, which may change with what it stands for.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QString>

namespace orvane {

/// An empty `meaning` is decoration: assistive technology passes over it.
struct OrvaRowSymbol {
    Live<QString> systemImage;
    Live<OrvaColor> color = OrvaColor::secondary;
    Live<QString> meaning = QString();
    double size = 20; // points
};

QWidget* makeOrvaWidget(const OrvaRowSymbol& symbol);

} // namespace orvane
