// The texts of the view kit: KitText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct KitText {
    Q_DECLARE_TR_FUNCTIONS(KitText)
};

} // namespace orvane
