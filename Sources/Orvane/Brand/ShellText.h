// The texts of the shell: ShellText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct ShellText {
    Q_DECLARE_TR_FUNCTIONS(ShellText)
};

} // namespace orvane
