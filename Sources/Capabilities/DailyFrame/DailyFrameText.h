// The texts of the daily wallpaper, for translation.
#pragma once

#include <QCoreApplication>

namespace orvane {

struct DailyFrameText {
    Q_DECLARE_TR_FUNCTIONS(DailyFrameText)
};

} // namespace orvane
