#include "Orvane/Permissions/PermissionChecklistView.h"

#include "Orvane/Brand/ShellText.h"
#include "Orvane/Navigation/OrvaNavigation.h"
#include "Orvane/Onboarding/OnboardingPageView.h"
#include "Orvane/Permissions/OrvaPermissionRow.h"
#include "Orvane/Permissions/PermissionRestartRow.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneKit/Model/OrvaSection.h"

namespace orvane {

namespace {

constexpr std::chrono::seconds interval{2};

} // namespace

AnyView PermissionChecklistView::body() const
{
    QList<AnyView> rows;
    for (const SystemPermission permission : allSystemPermissions)
        rows.append(OrvaPermissionRow{
            .permission = permission, .note = explanation(permission), .permissions = permissions});
    rows.append(PermissionRestartRow{});
    const auto refresh = [permissions = permissions] { permissions->refresh(); };
    const OnboardingPage page{
        .title = ShellText::tr("Permissions"),
        .text = ShellText::tr("Orvane's features need macOS privacy permissions. You can grant them now, or "
                              "later when you turn each feature on."),
        .width = Orva::pageWidth,
        .content = OrvaCard{rows}};
    return OrvaTicker{.interval = interval, .onAppear = refresh, .onTick = refresh, .content = page};
}

} // namespace orvane
