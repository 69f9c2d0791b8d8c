// The page of one capability: its name and switches, its permissions, and its settings pane, which reacts
// only while the capability is active. Main thread.
//
// While it is visible it reads the permissions at intervals, and a capability whose missing permission has
// been granted becomes active without a click.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <chrono>

namespace orvane {

class HomeNavigation;
class PermissionManager;

struct CapabilityDetailView {
    static constexpr std::chrono::milliseconds tick{2000};

    CapabilityRegistry::Entry entry;
    std::shared_ptr<CapabilityRegistry> registry;
    std::shared_ptr<PermissionManager> permissions;
    std::shared_ptr<HomeNavigation> navigation;

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }

    /// True means that the capability starts with the program.
    [[nodiscard]] Binding<bool> autoStart() const;
};

} // namespace orvane
