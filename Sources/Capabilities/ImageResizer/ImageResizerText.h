// The texts of Image Resizer: ImageResizerText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct ImageResizerText {
    Q_DECLARE_TR_FUNCTIONS(ImageResizerText)
};

} // namespace orvane
