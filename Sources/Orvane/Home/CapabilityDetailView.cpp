#include "Orvane/Home/CapabilityDetailView.h"

#include "Orvane/Brand/ShellText.h"
#include "Orvane/Home/CapabilityNotice.h"
#include "Orvane/Home/CapabilityToggle.h"
#include "Orvane/Home/HomeNavigation.h"
#include "Orvane/Navigation/OrvaNavigation.h"
#include "Orvane/Permissions/PermissionBanner.h"
#include "Orvane/Shortcuts/HotkeyChip.h"
#include "Orvane/Shortcuts/ShortcutViews.h"
#include "OrvaneCore/Base/Task.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneKit/Model/OrvaBox.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

namespace orvane {

namespace {

constexpr double chipGap = 4;
constexpr double titledChipGap = 8;

/// Panes speak of the section by this name.
AnyView underHeading(const AnyView& chips)
{
    const OrvaInset heading{orvaRingMargin, OrvaText{ShellText::tr("Keyboard Shortcuts"),
                                                     OrvaFont::smallCaptionSemibold, OrvaColor::secondary}};
    return OrvaVStack{chipGap, {heading, chips}};
}

ActionTitle titlesOf(const std::shared_ptr<CapabilityRegistry>& registry)
{
    return [registry](const QString& id) {
        if (id == QLatin1StringView("app.openOrvane"))
            return ShellText::tr("Open Orvane");
        for (const CapabilityRegistry::Entry& entry : registry->entries()) {
            for (const HotkeyAction& action : entry.capability->hotkeyActions()) {
                if (action.id == id)
                    return action.title;
            }
        }
        return QString();
    };
}

/// A single chip needs no title of its own. Of several, each has one.
AnyView hotkeyChips(const QList<HotkeyAction>& actions, const ActionTitle& titleOf)
{
    if (actions.isEmpty())
        return {};
    if (actions.size() == 1)
        return underHeading(OrvaWrap{chipGap, {HotkeyChip(actions.constFirst(), titleOf)}});
    QList<AnyView> chips;
    for (const HotkeyAction& action : actions) {
        const OrvaInset title{orvaRingMargin,
                              OrvaText{action.title, OrvaFont::caption, OrvaColor::secondary}};
        chips.append(OrvaVStack{0, {title, HotkeyChip(action, titleOf)}});
    }
    return underHeading(OrvaWrap{titledChipGap, chips, OrvaWrapColumns::equal});
}

/// Takes no room while it has nothing to say.
AnyView banner(const CapabilityDetailView& view)
{
    const CapabilityID id = view.entry.id();
    const AnyView failure = CapabilityNotice::banner(id, view.registry);
    const AnyView permissions =
        PermissionBanner::make(*view.entry.capability, view.permissions, view.navigation);
    const auto hasContent = [failure, permissions] {
        return !failure.children().isEmpty() || !permissions.children().isEmpty();
    };
    return OrvaIf{Live<bool>(hasContent, {view.registry, view.permissions}),
                  OrvaBox{.axis = OrvaBox::Axis::column, .content = {failure, permissions}}};
}

AnyView page(const CapabilityDetailView& view)
{
    const CapabilityID id = view.entry.id();
    const CapabilityMetadata& metadata = view.entry.metadata();
    const QList<HotkeyAction> actions = view.entry.capability->hotkeyActions();
    const auto context = view.registry->context(id);
    return OrvaPage{
        .contentEnabled =
            Live<bool>([registry = view.registry, id] { return registry->isActive(id); }, {view.registry}),
        .header = OrvaPageHeader{.symbol = metadata.symbolName,
                                 .title = metadata.displayName,
                                 .subtitle = metadata.summary,
                                 .autoStart = view.autoStart(),
                                 .autoStartTitle = ShellText::tr("Auto-start at launch"),
                                 .accessory = hotkeyChips(actions, titlesOf(view.registry)),
                                 .accessoryPlace = OrvaPageHeader::AccessoryPlace::below,
                                 .trailing = CapabilityToggle::make(id, view.registry)},
        .banner = banner(view),
        .content = context ? view.entry.capability->makeSettingsPane(*context) : AnyView(),
    };
}

} // namespace

Binding<bool> CapabilityDetailView::autoStart() const
{
    const CapabilityID id = entry.id();
    return Binding<bool>(
        [registry = registry, id] { return registry->startMode(id) == CapabilityStartMode::automatic; },
        [registry = registry, id](bool on) {
            registry->setStartMode(on ? CapabilityStartMode::automatic : CapabilityStartMode::manual, id);
        },
        {registry});
}

AnyView CapabilityDetailView::body() const
{
    const auto refresh = [permissions = permissions] { permissions->refresh(); };
    const auto reevaluate = [refresh, registry = registry] {
        refresh();
        startTask([registry]() -> Task<> { co_await registry->reevaluatePermissionGated(); });
    };
    return OrvaTicker{tick, refresh, reevaluate, page(*this)};
}

} // namespace orvane
