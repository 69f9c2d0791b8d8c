#include "Capabilities/Awake/AwakeSettingsPane.h"

#include "Capabilities/Awake/AwakeStatus.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::AwakeSettingsPane {

namespace {

using Controller = std::shared_ptr<AwakeController>;

/// The switch shows the person's wish; the line beneath tells what is held.
Binding<bool> isWanted(const Controller& controller)
{
    return bind(controller, &AwakeController::isWanted,
                [controller](bool on) { on ? controller->activateDefault() : controller->deactivate(); });
}

/// Each change of the state ends with a change of `expiresAt`.
Live<QString> statusLine(const Controller& controller)
{
    return live(controller, &AwakeController::expiresAt, [controller](const auto& expiresAt) {
        if (controller->isWanted.get() && !controller->isAwake.get())
            return AwakeStatus::pendingFootnote();
        return AwakeStatus::footnote(controller->isAwake.get(), expiresAt, QLocale::system(),
                                     QTimeZone::systemTimeZone());
    });
}

} // namespace

AnyView make(const Controller& controller)
{
    using Settings = AwakeSettings;
    const std::shared_ptr<Settings> settings = controller->settings();
    return OrvaPane{{
        section(
            QStringLiteral("Keep Awake"), QStringLiteral("eye"),
            {OrvaToggleRow(
                 QStringLiteral("Keep my Mac awake now"), isWanted(controller),
                 QStringLiteral("Prevents display and system sleep without touching your power settings.")),
             pickerRow(settings, &Settings::defaultDuration, QStringLiteral("Duration")),
             toggleRow(settings, &Settings::keepDisplayAwake, QStringLiteral("Keep the display awake too"),
                       QStringLiteral("Like Caffeine — stops the screen from dimming and sleeping. Off keeps "
                                      "only the system awake."))},
            statusLine(controller)),
        section(
            QStringLiteral("Menu Bar"), QStringLiteral("menubar.arrow.up.rectangle"),
            {toggleRow(
                settings, &Settings::showMenuBarIcon,
                QStringLiteral("Show a dedicated coffee-cup menu-bar icon"),
                QStringLiteral(
                    "Click it to toggle Awake; right-click for durations — just like the Caffeine app."))}),
        section(QStringLiteral("Startup"), QStringLiteral("power"),
                {toggleRow(settings, &Settings::awakeOnLaunch,
                           QStringLiteral("Start keeping awake when this feature turns on"))}),
        OrvaCalloutText{QStringLiteral("Use the coffee-cup icon, the Orvane menu, or a keyboard shortcut to "
                                       "flip Awake on and off from anywhere.")},
    }};
}

} // namespace orvane::AwakeSettingsPane
