// The texts of the mouse tools: MouseToolsText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct MouseToolsText {
    Q_DECLARE_TR_FUNCTIONS(MouseToolsText)
};

} // namespace orvane
