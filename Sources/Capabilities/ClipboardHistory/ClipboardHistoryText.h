// The texts of Clipboard History: ClipboardHistoryText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct ClipboardHistoryText {
    Q_DECLARE_TR_FUNCTIONS(ClipboardHistoryText)
};

} // namespace orvane
