// The texts of the core: CoreText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct CoreText {
    Q_DECLARE_TR_FUNCTIONS(CoreText)
};

} // namespace orvane
