#include "Orvane/Permissions/PermissionBanner.h"

#include "Orvane/Brand/ShellText.h"
#include "Orvane/Home/HomeNavigation.h"
#include "Orvane/Permissions/OrvaPermissionRow.h"
#include "Orvane/Permissions/PermissionRestartRow.h"
#include "OrvaneCore/Capability/Capability.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPageMetrics.h"
#include "OrvaneKit/Model/OrvaSection.h"

namespace orvane {

namespace {

using Items = QList<OrvaForEach::Item>;

constexpr double markSide = 16;
constexpr double markGap = 6;

QList<PermissionRequirement> missingOf(QList<PermissionRequirement> requirements,
                                       const PermissionManager& permissions)
{
    requirements.removeIf([&](const PermissionRequirement& requirement) {
        return isGranted(permissions.status(requirement.permission));
    });
    return requirements;
}

AnyView permissionRow(const PermissionRequirement& requirement,
                      const std::shared_ptr<PermissionManager>& permissions)
{
    return OrvaPermissionRow{.permission = requirement.permission,
                             .level = requirement.level,
                             .note = requirement.note.value_or(explanation(requirement.permission)),
                             .permissions = permissions};
}

AnyView missingCard(const QList<PermissionRequirement>& requirements,
                    const std::shared_ptr<PermissionManager>& permissions)
{
    const Live<Items> rows(
        [requirements, permissions] {
            Items items;
            for (const PermissionRequirement& requirement : missingOf(requirements, *permissions))
                items.append({requirement.id(), permissionRow(requirement, permissions)});
            return items;
        },
        {permissions});
    QList<SystemPermission> all;
    for (const PermissionRequirement& requirement : requirements)
        all.append(requirement.permission);
    const OrvaCard card{{OrvaForEach{rows}, PermissionRestartRow{all, permissions}}};
    return OrvaBox{.content = {OrvaBoxPart::filling(card), OrvaBoxPart::gap(OrvaPageMetrics::overhang)}};
}

/// The button's mark ends where cards do.
AnyView grantedLine(const std::shared_ptr<HomeNavigation>& navigation)
{
    return OrvaHStack{
        markGap,
        {OrvaSymbolMark{QStringLiteral("checkmark.circle.fill"), markSide, OrvaColor::green},
         OrvaText{ShellText::tr("All permissions granted"), OrvaFont::callout, OrvaColor::secondary},
         OrvaSpacer{},
         OrvaTextButton{ShellText::tr("Manage in General"), [navigation] { navigation->showPermissions(); },
                        QStringLiteral("chevron.right")}}};
}

} // namespace

AnyView PermissionBanner::make(const Capability& capability,
                               const std::shared_ptr<PermissionManager>& permissions,
                               const std::shared_ptr<HomeNavigation>& navigation)
{
    const QList<PermissionRequirement> requirements = capability.permissionRequirements();
    if (requirements.isEmpty())
        return {};
    const bool requiresSome = !capability.requiredPermissions().isEmpty();
    return OrvaForEach{Live<Items>(
        [requirements, requiresSome, permissions, navigation] {
            if (!missingOf(requirements, *permissions).isEmpty())
                return Items{{QStringLiteral("missing"), missingCard(requirements, permissions)}};
            // Nobody waits for a permission that is only optional.
            return requiresSome ? Items{{QStringLiteral("granted"), grantedLine(navigation)}} : Items{};
        },
        {permissions})};
}

} // namespace orvane
