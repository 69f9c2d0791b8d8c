#include "Orvane/Home/HomeView.h"

#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Brand/ShellText.h"
#include "Orvane/Home/CapabilityDetailView.h"
#include "Orvane/Home/GeneralSettingsView.h"
#include "Orvane/Home/StatusDot.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneCore/Preferences/AppPreferences.h"

namespace orvane {

namespace {

const QString generalTag = QStringLiteral("general");
const QString capabilityTag = QStringLiteral("capability/");

/// No capability has an id like the tag of the general page.
QString tagOf(const HomeSelection& selection)
{
    const CapabilityID* id = selection.capabilityID();
    return id ? capabilityTag + id->rawValue : generalTag;
}

HomeSelection selectionOf(const QString& tag)
{
    return tag.startsWith(capabilityTag) ? HomeSelection::capability({tag.mid(capabilityTag.size())})
                                         : HomeSelection::general();
}

OrvaSidebarRow sidebarRow(const CapabilityRegistry::Entry& entry)
{
    return {.tag = tagOf(HomeSelection::capability(entry.id())),
            .title = entry.metadata().displayName,
            .systemImage = entry.metadata().symbolName,
            .status = StatusDot::of(entry.state)};
}

} // namespace

QList<CapabilityCategory> HomeView::groupedCategories(const QList<CapabilityRegistry::Entry>& entries)
{
    QList<CapabilityCategory> categories;
    for (const CapabilityRegistry::Entry& entry : entries) {
        if (!categories.contains(entry.metadata().category))
            categories.append(entry.metadata().category);
    }
    return categories;
}

QList<OrvaSidebarSection> HomeView::sidebarSections() const
{
    QList<OrvaSidebarSection> sections{{.title = {},
                                        .rows = {{.tag = generalTag,
                                                  .title = ShellText::tr("General"),
                                                  .systemImage = QStringLiteral("gearshape"),
                                                  .tileColor = OrvaColor::secondary}}}};
    for (const CapabilityCategory category : groupedCategories(registry->entries())) {
        OrvaSidebarSection section{.title = title(category), .rows = {}};
        for (const CapabilityRegistry::Entry& entry : registry->entries()) {
            if (entry.metadata().category == category)
                section.rows.append(sidebarRow(entry));
        }
        sections.append(section);
    }
    return sections;
}

HomeSelection HomeView::shown() const
{
    const auto& selection = navigation->selection.get();
    const CapabilityID* id = selection ? selection->capabilityID() : nullptr;
    return id && registry->entry(*id) ? *selection : HomeSelection::general();
}

AnyView HomeView::detail() const
{
    const HomeSelection page = shown();
    const CapabilityID* id = page.capabilityID();
    if (const auto entry = id ? registry->entry(*id) : std::nullopt)
        return CapabilityDetailView{*entry, registry, permissions, navigation};
    return GeneralSettingsView{preferences, permissions, registry, navigation};
}

AnyView HomeView::body() const
{
    const std::shared_ptr<ObservableObject> selection(navigation, &navigation->selection);
    const auto shownTag = [view = *this] { return tagOf(view.shown()); };
    const Binding<QString> selected(
        shownTag,
        [navigation = navigation](const QString& tag) { navigation->selection.set(selectionOf(tag)); },
        {selection});
    const Live<QList<OrvaSidebarSection>> sections([view = *this] { return view.sidebarSections(); },
                                                   {registry});
    return OrvaSplit{.minimumWidth = sidebarMinimumWidth,
                     .idealWidth = sidebarIdealWidth,
                     .header = OrvaneWordmark{wordmarkSize},
                     .sidebar = OrvaSidebar{ShellText::tr("Features"), selected, sections},
                     .detail = OrvaKeyed{Live<QString>(shownTag, {selection}),
                                         [view = *this](const QString&) { return view.detail(); }}};
}

} // namespace orvane
