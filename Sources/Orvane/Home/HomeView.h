// The content of the home window: the suite's pages in a sidebar, and the one that is chosen. Main thread.
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

    AnyView body() const;
    QList<AnyView> children() const { return {body()}; }

    /// The page that is shown. It is the general one where nothing is selected, or a capability that isn't
    /// there.
    HomeSelection shown() const;
    AnyView detail() const;
    QList<OrvaSidebarSection> sidebarSections() const;

    /// Returns the categories of the entries, each once, in the order in which they first occur.
    static QList<CapabilityCategory> groupedCategories(const QList<CapabilityRegistry::Entry>& entries);
};

} // namespace orvane
