// The page of one capability: its name and switches, its permissions, and its settings pane, live only while
// it is active. Main thread.
//
// While it is in sight it reads the permissions again and again, and a capability that waits for one which
// has been granted becomes active without a click.
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

    AnyView body() const;
    QList<AnyView> children() const { return {body()}; }

    /// On means that the capability starts with the program.
    [[nodiscard]] Binding<bool> autoStart() const;
};

} // namespace orvane
