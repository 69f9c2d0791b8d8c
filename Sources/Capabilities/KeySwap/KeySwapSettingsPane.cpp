#include "Capabilities/KeySwap/KeySwapSettingsPane.h"

#include "Capabilities/KeySwap/ExcludedAppsRows.h"
#include "Capabilities/KeySwap/KeySwapText.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::KeySwapSettingsPane {

namespace {

QString explanation(RemapMode mode)
{
    switch (mode) {
    case RemapMode::off:
        break;
    case RemapMode::commonShortcuts:
        return KeySwapText::tr(
            "Ctrl with A, C, F, N, R, S, T, V, W, X or Z becomes the command of the app in "
            "front. Cmd stays Cmd, and every other key stays as it is.");
    case RemapMode::fullSwap:
        return KeySwapText::tr(
            "Cmd (on many keyboards Super, the key with a logo) acts as Ctrl and Ctrl acts "
            "as Cmd: with every key, with a click and alone. Shortcuts with ⌘, Orvane's and "
            "the system's, are pressed with Ctrl, except in the apps left out below.");
    }
    return KeySwapText::tr("Every key stays as it is.");
}

} // namespace

AnyView make(const std::shared_ptr<KeySwapSettings>& settings)
{
    using Settings = KeySwapSettings;
    const OrvaIf fullSwapWarning{
        live(settings, &Settings::mode, [](RemapMode mode) { return mode == RemapMode::fullSwap; }),
        OrvaCaptionRow{
            KeySwapText::tr(
                "Full swap changes every Ctrl/Cmd shortcut — including system ones. Use with care."),
            QStringLiteral("exclamationmark.triangle.fill"), OrvaColor::orange}};
    return OrvaPane{{
        section(KeySwapText::tr("Remapping"), QStringLiteral("command"),
                {radioGroup(settings, &Settings::mode, KeySwapText::tr("Remapping")),
                 OrvaCaptionRow{live(settings, &Settings::mode, explanation)}, fullSwapWarning}),
        section(KeySwapText::tr("App Exclusions"), QStringLiteral("app.badge"),
                {pickerRow(settings, &Settings::exclusionMode, KeySwapText::tr("Apply remapping")),
                 ExcludedAppsRows::list(settings), ExcludedAppsRows::add(settings)},
                KeySwapText::tr("Terminals and IDEs are excluded by default so Ctrl+C keeps working there.")),
    }};
}

} // namespace orvane::KeySwapSettingsPane
