// The texts of Awake: AwakeText::tr("Text").
#pragma once

#include <QCoreApplication>

namespace orvane {

struct AwakeText {
    Q_DECLARE_TR_FUNCTIONS(AwakeText)
};

} // namespace orvane
