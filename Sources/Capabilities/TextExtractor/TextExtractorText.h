// The texts of the text extractor: TextExtractorText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct TextExtractorText {
    Q_DECLARE_TR_FUNCTIONS(TextExtractorText)
};

} // namespace orvane
