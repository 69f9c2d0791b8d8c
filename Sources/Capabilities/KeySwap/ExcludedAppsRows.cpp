#include "Capabilities/KeySwap/ExcludedAppsRows.h"

#include "OrvaneKit/AppChooser/OrvaAppChooser.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::ExcludedAppsRows {

namespace {

AnyView appRow(const std::shared_ptr<KeySwapSettings>& settings, const QString& app)
{
    return OrvaRow{
        .content = {OrvaSelectableText{app}, OrvaSpacer{},
                    OrvaIconButton{.systemImage = QStringLiteral("minus.circle"),
                                   .help = QStringLiteral("Remove"),
                                   .accessibleName = QStringLiteral("Remove ") + app,
                                   .action = [settings, app] { settings->removeExcludedApp(app); }}}};
}

} // namespace

AnyView list(const std::shared_ptr<KeySwapSettings>& settings)
{
    return OrvaForEach{live(settings, &KeySwapSettings::excludedApps, [settings](const QStringList& apps) {
        QList<OrvaForEach::Item> rows;
        for (const QString& app : apps)
            rows.append({app, appRow(settings, app)});
        return rows;
    })};
}

AnyView add(const std::shared_ptr<KeySwapSettings>& settings)
{
    const auto choose = [settings] {
        OrvaAppChooser::run([settings](const QString& bundleID) { settings->addExcludedApp(bundleID); },
                            settings->excludedApps.get());
    };
    return OrvaRow{.content = {OrvaButton{.title = QStringLiteral("Add App…"),
                                          .action = choose,
                                          .systemImage = QStringLiteral("plus")},
                               OrvaSpacer{}}};
}

} // namespace orvane::ExcludedAppsRows
