// A symbol at the head of a row, which may change with the state that it shows.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QString>

namespace orvane {

/// With an empty `meaning` it is decoration, which assistive technology ignores.
struct OrvaRowSymbol {
    Live<QString> systemImage;
    Live<OrvaColor> color = OrvaColor::secondary;
    Live<QString> meaning = QString();
    double size = 20; // points
};

QWidget* makeOrvaWidget(const OrvaRowSymbol& symbol);

} // namespace orvane
