#include "Capabilities/KeySwap/KeySwapSettingsPane.h"

#include "OrvaneKit/AppChooser/OrvaAppChooser.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaSection.h"

namespace orvane {

namespace {

QString option(RemapMode mode)
{
    return rawValue(mode);
}

AnyView modeChoice(const std::shared_ptr<KeySwapSettings>& settings)
{
    return OrvaRadioGroup{.label = QStringLiteral("Remapping"),
                          .selection = bind(settings, &KeySwapSettings::modeRaw),
                          .content = QList<OrvaPickerOption>{
                              {QStringLiteral("Off"), option(RemapMode::off)},
                              {QStringLiteral("Common shortcuts — ⌃C / ⌃V / ⌃X / ⌃Z / ⌃A become ⌘"),
                               option(RemapMode::commonShortcuts)},
                              {QStringLiteral("Swap Ctrl and Cmd everywhere"), option(RemapMode::fullSwap)}}};
}

AnyView fullSwapWarning(const std::shared_ptr<KeySwapSettings>& settings)
{
    const std::shared_ptr<ObservableObject> mode(settings, &settings->modeRaw);
    return OrvaIf{
        Live<bool>([settings] { return settings->mode() == RemapMode::fullSwap; }, {mode}),
        OrvaCaptionRow{.text = QStringLiteral("Full swap changes every Ctrl/Cmd shortcut — including system "
                                              "ones. Use with care."),
                       .systemImage = QStringLiteral("exclamationmark.triangle.fill"),
                       .color = OrvaColor::orange}};
}

AnyView exclusionModePicker(const std::shared_ptr<KeySwapSettings>& settings)
{
    return OrvaPickerRow{
        QStringLiteral("Apply remapping"), bind(settings, &KeySwapSettings::exclusionModeRaw),
        QList<OrvaPickerOption>{{QStringLiteral("Everywhere except these apps"), QStringLiteral("denylist")},
                                {QStringLiteral("Only in these apps"), QStringLiteral("allowlist")}}};
}

AnyView appRow(const std::shared_ptr<KeySwapSettings>& settings, const QString& app)
{
    return OrvaRow{
        .content = {OrvaSelectableText{app}, OrvaSpacer{},
                    OrvaIconButton{.systemImage = QStringLiteral("minus.circle"),
                                   .help = QStringLiteral("Remove"),
                                   .accessibleName = QStringLiteral("Remove ") + app,
                                   .action = [settings, app] { settings->removeExcludedApp(app); }}}};
}

AnyView appRows(const std::shared_ptr<KeySwapSettings>& settings)
{
    const std::shared_ptr<ObservableObject> apps(settings, &settings->excludedApps);
    return OrvaForEach{Live<QList<OrvaForEach::Item>>(
        [settings] {
            QList<OrvaForEach::Item> rows;
            for (const QString& app : settings->excludedApps.get())
                rows.append({app, appRow(settings, app)});
            return rows;
        },
        {apps})};
}

AnyView addAppRow(const std::shared_ptr<KeySwapSettings>& settings)
{
    return OrvaRow{.content = {OrvaButton{.title = QStringLiteral("Add App…"),
                                          .action =
                                              [settings] {
                                                  OrvaAppChooser::run(
                                                      [settings](const QString& bundleID) {
                                                          settings->addExcludedApp(bundleID);
                                                      },
                                                      settings->excludedApps.get());
                                              },
                                          .systemImage = QStringLiteral("plus")},
                               OrvaSpacer{}}};
}

} // namespace

AnyView KeySwapSettingsPane::make(std::shared_ptr<KeySwapSettings> settings)
{
    return OrvaPane{{
        OrvaSection{.title = QStringLiteral("Remapping"),
                    .systemImage = QStringLiteral("command"),
                    .content = {modeChoice(settings), fullSwapWarning(settings)}},
        OrvaSection{.title = QStringLiteral("App Exclusions"),
                    .systemImage = QStringLiteral("app.badge"),
                    .footnote = Live<QString>(QStringLiteral(
                        "Terminals and IDEs are excluded by default so Ctrl+C keeps working there.")),
                    .content = {exclusionModePicker(settings), appRows(settings), addAppRow(settings)}},
    }};
}

} // namespace orvane
