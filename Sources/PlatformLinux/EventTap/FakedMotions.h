// The motions of keys that the program itself makes on the user's own keyboards, so that a listener can tell
// them from the user's. Any thread.
#pragma once

#include "PlatformLinux/X11/InputConnection.h"
#include "PlatformLinux/X11/KeyActions.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace orvane {

class FakedMotions {
public:
    /// Says if there is a listener. Without one nothing is kept.
    void setHeard(bool isHeard)
    {
        const std::scoped_lock lock(m_mutex);
        m_isHeard = isHeard;
        m_motions.clear();
    }
    /// To be called before the motion is made.
    void note(DeviceId device, std::uint8_t key, KeyMotion motion)
    {
        const std::scoped_lock lock(m_mutex);
        if (m_isHeard)
            m_motions.push_back({device, key, motion});
    }
    /// True if a motion that was heard is one of them. Each counts once.
    bool take(DeviceId device, std::uint8_t key, KeyMotion motion)
    {
        const std::scoped_lock lock(m_mutex);
        const auto at = std::ranges::find(m_motions, Motion{device, key, motion});
        if (at == m_motions.end())
            return false;
        m_motions.erase(at);
        return true;
    }

private:
    struct Motion {
        DeviceId device;
        std::uint8_t key;
        KeyMotion motion;
        bool operator==(const Motion&) const = default;
    };

    std::mutex m_mutex;
    std::vector<Motion> m_motions;
    bool m_isHeard = false;
};

} // namespace orvane
