// The content of the home window: the first run until it has been finished, then always the home view.
#pragma once

#include "Orvane/Home/HomeNavigation.h"
#include "OrvaneCore/Base/Observable.h"
#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaComposite.h"

#include <QSize>

namespace orvane {

class AppEnvironment;
class AppPreferences;
class CapabilityRegistry;
class PermissionManager;

struct RootView {
    static constexpr QSize minimumSize{820, 560}; // points

    static AnyView make(const std::shared_ptr<AppEnvironment>& environment);

    /// Stored as "hasOnboarded".
    Binding<bool> hasOnboarded;
    std::shared_ptr<CapabilityRegistry> registry;
    std::shared_ptr<PermissionManager> permissions;
    std::shared_ptr<AppPreferences> preferences;
    std::shared_ptr<HomeNavigation> navigation = std::make_shared<HomeNavigation>();

    [[nodiscard]] AnyView body() const;
    [[nodiscard]] QList<AnyView> children() const { return {body()}; }
};

} // namespace orvane
