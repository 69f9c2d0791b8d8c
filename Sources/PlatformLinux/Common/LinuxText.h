// The texts of this layer that a person reads: LinuxText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct LinuxText {
    Q_DECLARE_TR_FUNCTIONS(LinuxText)
};

} // namespace orvane
