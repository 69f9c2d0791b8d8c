// The part of a capability's page about the permissions that the capability can't do without.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

namespace orvane {

class Capability;
class HomeNavigation;
class PermissionManager;

class PermissionBanner {
public:
    /// Makes a row for each missing permission, required or optional. Where none is missing, a line says so
    /// with a link to them, if the capability requires any.
    static AnyView make(const Capability& capability, const std::shared_ptr<PermissionManager>& permissions,
                        const std::shared_ptr<HomeNavigation>& navigation);
};

} // namespace orvane
