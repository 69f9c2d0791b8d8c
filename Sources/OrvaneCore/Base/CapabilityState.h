// The state of a capability in its registry, as a value that views may show.
#pragma once

#include <QString>

#include <utility>

namespace orvane {

struct CapabilityState {
    enum class Kind {
        disabled,        // registered, or uninstalled: nothing was done yet
        installed,       // `install` has run, or it was switched off; nothing runs
        active,          // its services run
        needsPermission, // enabled by the user, but a required permission is missing
        failed,          // `install` or `activate` threw
    };

    Kind kind = Kind::disabled;
    /// The error's text; set for `failed` alone.
    QString description = {};

    static CapabilityState failed(QString text) { return {Kind::failed, std::move(text)}; }

    friend bool operator==(const CapabilityState&, const CapabilityState&) = default;
    friend bool operator==(const CapabilityState& state, Kind other) { return state.kind == other; }
};

} // namespace orvane
