#include "Capabilities/KeySwap/ExcludedAppsRows.h"

#include "Capabilities/KeySwap/KeySwapText.h"
#include "Capabilities/KeySwap/ListedApp.h"
#include "OrvaneKit/AppChooser/OrvaAppChooser.h"
#include "OrvaneKit/AppChooser/OrvaAppIconView.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

namespace orvane::ExcludedAppsRows {

namespace {

AnyView appRow(const std::shared_ptr<KeySwapSettings>& settings, const QString& identifier,
               const ListedApp& app)
{
    const OrvaText absent{KeySwapText::tr("Not installed"), OrvaFont::caption, OrvaColor::secondary};
    QList<AnyView> content{
        OrvaAppIcon{app.iconName},
        OrvaText{.text = app.name, .color = app.isInstalled ? OrvaColor::primary : OrvaColor::secondary},
        OrvaSpacer{}};
    if (!app.isInstalled)
        content.append(absent);
    content.append(
        OrvaIconButton{.systemImage = QStringLiteral("minus.circle"),
                       .help = KeySwapText::tr("Remove"),
                       .accessibleName = KeySwapText::tr("Remove %1").arg(app.name),
                       .action = [settings, identifier] { settings->removeExcludedApp(identifier); }});
    return OrvaRow{.content = content};
}

} // namespace

AnyView list(const std::shared_ptr<KeySwapSettings>& settings)
{
    const auto rows = [settings](const QStringList& identifiers) {
        const QList<InstalledApplication> installed = platform().sharedWorkspace.installedApplications();
        QList<OrvaForEach::Item> made;
        for (const QString& identifier : identifiers)
            made.append({identifier, appRow(settings, identifier, listedApp(identifier, installed))});
        return made;
    };
    return OrvaForEach{live(settings, &KeySwapSettings::excludedApps, rows)};
}

AnyView add(const std::shared_ptr<KeySwapSettings>& settings)
{
    const auto choose = [settings] {
        OrvaAppChooser::run([settings](const QString& bundleID) { settings->addExcludedApp(bundleID); },
                            settings->excludedApps.get());
    };
    return OrvaRow{.content = {OrvaButton{.title = KeySwapText::tr("Add App…"),
                                          .action = choose,
                                          .systemImage = QStringLiteral("plus")},
                               OrvaSpacer{}}};
}

} // namespace orvane::ExcludedAppsRows
