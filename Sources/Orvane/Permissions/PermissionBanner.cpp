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

QList<PermissionRequirement> requiredOnes(const Capability& capability)
{
    QList<PermissionRequirement> required = capability.permissionRequirements();
    required.removeIf([](const PermissionRequirement& requirement) {
        return requirement.level != PermissionRequirement::Level::required;
    });
    return required;
}

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

AnyView missingCard(const QList<PermissionRequirement>& required,
                    const std::shared_ptr<PermissionManager>& permissions)
{
    const Live<Items> rows(
        [required, permissions] {
            Items items;
            for (const PermissionRequirement& requirement : missingOf(required, *permissions))
                items.append({requirement.id(), permissionRow(requirement, permissions)});
            return items;
        },
        {permissions});
    return OrvaBox{.content = {OrvaBoxPart::filling(OrvaCard{{OrvaForEach{rows}, PermissionRestartRow{}}}),
                               OrvaBoxPart::gap(OrvaPageMetrics::overhang)}};
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
    const QList<PermissionRequirement> required = requiredOnes(capability);
    if (required.isEmpty())
        return {};
    return OrvaForEach{Live<Items>(
        [required, permissions, navigation] {
            if (missingOf(required, *permissions).isEmpty())
                return Items{{QStringLiteral("granted"), grantedLine(navigation)}};
            return Items{{QStringLiteral("missing"), missingCard(required, permissions)}};
        },
        {permissions})};
}

} // namespace orvane
