// Power assertions that hold nothing and are recorded.
#pragma once

#include "Platform/PowerAssertions.h"

#include <map>
#include <vector>

namespace orvane {

class FakePowerAssertions : public PowerAssertions {
public:
    struct Held {
        PowerAssertionType type;
        std::uint32_t level;
        QString name;
        bool operator==(const Held&) const = default;
    };

    Result createWithName(PowerAssertionType type, std::uint32_t level, const QString& name) override
    {
        ++creations;
        if (nextStatus != Status::success)
            return {nextStatus, 0};
        const PowerAssertionID id = ++m_lastID;
        held.emplace(id, Held{type, level, name});
        return {Status::success, id};
    }

    void release(PowerAssertionID id) override
    {
        releases.push_back(id);
        held.erase(id);
    }

    /// The status of the next creations.
    Status nextStatus = Status::success;
    std::map<PowerAssertionID, Held> held;
    std::vector<PowerAssertionID> releases;
    int creations = 0;

private:
    PowerAssertionID m_lastID = 0;
};

} // namespace orvane
