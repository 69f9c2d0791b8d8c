// The texts of Plain Paste: PlainPasteText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct PlainPasteText {
    Q_DECLARE_TR_FUNCTIONS(PlainPasteText)
};

} // namespace orvane
