#include "OrvaneCore/Capability/Capability.h"

namespace orvane {

namespace {

QList<SystemPermission> permissions(const QList<PermissionRequirement>& requirements,
                                    PermissionRequirement::Level level)
{
    QList<SystemPermission> list;
    for (const PermissionRequirement& requirement : requirements) {
        if (requirement.level == level)
            list.append(requirement.permission);
    }
    return list;
}

} // namespace

Task<> Capability::install(CapabilityContext)
{
    co_return;
}
Task<> Capability::uninstall(CapabilityContext)
{
    co_return;
}

QList<SystemPermission> Capability::requiredPermissions() const
{
    return permissions(permissionRequirements(), PermissionRequirement::Level::required);
}

QList<SystemPermission> Capability::optionalPermissions() const
{
    return permissions(permissionRequirements(), PermissionRequirement::Level::optional);
}

} // namespace orvane
