#include "Orvane/Home/CapabilityNotice.h"

#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPageMetrics.h"

namespace orvane {

namespace {

using Items = QList<OrvaForEach::Item>;

constexpr int bannerGap = 8;

AnyView whileItHolds(const CapabilityID& id, const std::shared_ptr<CapabilityRegistry>& registry,
                     std::function<bool(const CapabilityState&)> holds,
                     std::function<AnyView(const QString& reason)> make)
{
    return OrvaForEach{Live<Items>(
        [=] {
            const auto entry = registry->entry(id);
            const QString reason =
                entry && holds(entry->state) ? CapabilityNotice::reason(*entry) : QString();
            return reason.isEmpty() ? Items{} : Items{{reason, make(reason)}};
        },
        {registry})};
}

} // namespace

QString CapabilityNotice::reason(const CapabilityRegistry::Entry& entry)
{
    switch (entry.state.kind) {
    case CapabilityState::Kind::failed:
        return entry.state.description;
    case CapabilityState::Kind::needsPermission:
        for (const SystemPermission permission : entry.capability->requiredPermissions()) {
            if (const QString denial = PermissionManager::denial(permission).reason; !denial.isEmpty())
                return denial;
        }
        return OrvaBadge::state(entry.state).text;
    case CapabilityState::Kind::disabled:
    case CapabilityState::Kind::installed:
    case CapabilityState::Kind::active:
        break;
    }
    return {};
}

AnyView CapabilityNotice::banner(const CapabilityID& id, const std::shared_ptr<CapabilityRegistry>& registry)
{
    return whileItHolds(
        id, registry, [](const CapabilityState& state) { return state == CapabilityState::Kind::failed; },
        [](const QString& reason) -> AnyView {
            const OrvaStatusBanner banner{.kind = OrvaStatusBanner::Kind::warning, .message = reason};
            return OrvaBox{
                .margins = QMargins(0, 0, 0, bannerGap),
                .content = {OrvaBoxPart::filling(banner), OrvaBoxPart::gap(OrvaPageMetrics::overhang)}};
        });
}

AnyView CapabilityNotice::line(const CapabilityID& id, const std::shared_ptr<CapabilityRegistry>& registry)
{
    return whileItHolds(
        id, registry, [](const CapabilityState&) { return true; },
        [](const QString& reason) -> AnyView {
            return OrvaText{reason, OrvaFont::caption, OrvaColor::primary, OrvaTextLines::wrapped,
                            Qt::AlignLeft | Qt::AlignTop};
        });
}

} // namespace orvane
