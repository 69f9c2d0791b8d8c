#include "Capabilities/KeySwap/KeySwapSettingsPane.h"

#include "Capabilities/KeySwap/ExcludedAppsRows.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::KeySwapSettingsPane {

namespace {

QString explanation(RemapMode mode)
{
    switch (mode) {
    case RemapMode::off:
        break;
    case RemapMode::commonShortcuts:
        return QStringLiteral("Ctrl with A, C, F, N, R, S, T, V, W, X or Z becomes the command of the app in "
                              "front. Cmd stays Cmd, and every other key stays as it is.");
    case RemapMode::fullSwap:
        return QStringLiteral(
            "Cmd (on many keyboards Super, the key with a logo) acts as Ctrl and Ctrl acts "
            "as Cmd: with every key, with a click and alone. Shortcuts with ⌘, Orvane's and "
            "the system's, are pressed with Ctrl, except in the apps left out below.");
    }
    return QStringLiteral("Every key stays as it is.");
}

} // namespace

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
                {radioGroup(settings, &Settings::mode, QStringLiteral("Remapping")),
                 OrvaCaptionRow{live(settings, &Settings::mode, explanation)}, fullSwapWarning}),
        section(QStringLiteral("App Exclusions"), QStringLiteral("app.badge"),
                {pickerRow(settings, &Settings::exclusionMode, QStringLiteral("Apply remapping")),
                 ExcludedAppsRows::list(settings), ExcludedAppsRows::add(settings)},
                QStringLiteral("Terminals and IDEs are excluded by default so Ctrl+C keeps working there.")),
    }};
}

} // namespace orvane::KeySwapSettingsPane
