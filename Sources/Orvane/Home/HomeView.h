// The content of the home window: the suite's pages in a sidebar, and the selected one. Main thread.
#pragma once

#include "Orvane/Home/HomeNavigation.h"
#include "Orvane/Navigation/OrvaNavigation.h"
#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneKit/Model/OrvaComposite.h"

namespace orvane {

class AppPreferences;
class PermissionManager;

struct HomeView {
    static constexpr double sidebarMinimumWidth = 230; // points
    static constexpr double sidebarIdealWidth = 250;
    static constexpr double wordmarkSize = 17;

    std::shared_ptr<CapabilityRegistry> registry;
    std::shared_ptr<PermissionManager> permissions;
    std::shared_ptr<AppPreferences> preferences;
    std::shared_ptr<HomeNavigation> navigation = std::make_shared<HomeNavigation>();

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }

    /// Returns the page that is shown: the general one if nothing, or an unknown capability, is selected.
    [[nodiscard]] HomeSelection shown() const;
    [[nodiscard]] AnyView detail() const;
    [[nodiscard]] QList<OrvaSidebarSection> sidebarSections() const;

    /// Returns the categories of the entries, each once, in the order in which they first occur.
    static QList<CapabilityCategory> groupedCategories(const QList<CapabilityRegistry::Entry>& entries);
};

} // namespace orvane
