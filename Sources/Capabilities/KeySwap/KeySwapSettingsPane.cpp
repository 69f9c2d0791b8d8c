#include "Capabilities/KeySwap/KeySwapSettingsPane.h"

#include "Capabilities/KeySwap/ExcludedAppsRows.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::KeySwapSettingsPane {

AnyView make(const std::shared_ptr<KeySwapSettings>& settings)
{
    using Settings = KeySwapSettings;
    const OrvaIf fullSwapWarning{
        live(settings, &Settings::mode, [](RemapMode mode) { return mode == RemapMode::fullSwap; }),
        OrvaCaptionRow{
            QStringLiteral(
                "Full swap changes every Ctrl/Cmd shortcut — including system ones. Use with care."),
            QStringLiteral("exclamationmark.triangle.fill"), OrvaColor::orange}};
    return OrvaPane{{
        section(QStringLiteral("Remapping"), QStringLiteral("command"),
                {radioGroup(settings, &Settings::mode, QStringLiteral("Remapping")), fullSwapWarning}),
        section(QStringLiteral("App Exclusions"), QStringLiteral("app.badge"),
                {pickerRow(settings, &Settings::exclusionMode, QStringLiteral("Apply remapping")),
                 ExcludedAppsRows::list(settings), ExcludedAppsRows::add(settings)},
                QStringLiteral("Terminals and IDEs are excluded by default so Ctrl+C keeps working there.")),
    }};
}

} // namespace orvane::KeySwapSettingsPane
