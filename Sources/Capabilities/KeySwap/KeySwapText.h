// The texts of Ctrl Shortcuts: KeySwapText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct KeySwapText {
    Q_DECLARE_TR_FUNCTIONS(KeySwapText)
};

} // namespace orvane
