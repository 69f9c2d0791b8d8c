// The content of the home window: the suite's pages in a sidebar, and the one that is chosen. Main thread.
#pragma once

#include "Orvane/Home/HomeNavigation.h"
#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneCore/Capability/CapabilityRegistry.h"
#include "OrvaneKit/Model/OrvaNavigation.h"

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

    [[nodiscard]] QList<AnyView> children() const;

    /// What is shown: the general page too where nothing or a capability that isn't there is selected.
    [[nodiscard]] HomeSelection shown() const;
    [[nodiscard]] AnyView detail() const;
    [[nodiscard]] QList<OrvaSidebarSection> sidebarSections() const;

    /// In the order that they are met, each once.
    static QList<CapabilityCategory> groupedCategories(const QList<CapabilityRegistry::Entry>& entries);
};

QWidget* makeOrvaWidget(const HomeView& view);

} // namespace orvane
