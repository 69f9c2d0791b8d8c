// A monitor of 1280 by 1000 that is plugged in beside, above or below the private desktop's first one, and is
// unplugged at the object's end.
#pragma once

#include <QStringList>

namespace orvane::tests {

class PluggedMonitor {
public:
    enum class Place { right, left, above, below };

    explicit PluggedMonitor(Place place = Place::right);
    ~PluggedMonitor();
    PluggedMonitor(const PluggedMonitor&) = delete;
    PluggedMonitor& operator=(const PluggedMonitor&) = delete;

private:
    static bool xrandr(const QStringList& arguments);
};

} // namespace orvane::tests
