#include "Capabilities/Awake/AwakeSettingsPane.h"

#include "Capabilities/Awake/AwakeStatus.h"
#include "Capabilities/Awake/AwakeText.h"
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
        return AwakeStatus::footnote(controller->isAwake.get(), expiresAt, QLocale(),
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
            AwakeText::tr("Keep Awake"), QStringLiteral("eye"),
            {OrvaToggleRow(
                 AwakeText::tr("Keep my Mac awake now"), isWanted(controller),
                 AwakeText::tr("Prevents display and system sleep without touching your power settings.")),
             pickerRow(settings, &Settings::defaultDuration, AwakeText::tr("Duration")),
             toggleRow(settings, &Settings::keepDisplayAwake, AwakeText::tr("Keep the display awake too"),
                       AwakeText::tr("Like Caffeine — stops the screen from dimming and sleeping. Off keeps "
                                     "only the system awake."))},
            statusLine(controller)),
        section(
            AwakeText::tr("Menu Bar"), QStringLiteral("menubar.arrow.up.rectangle"),
            {toggleRow(
                settings, &Settings::showMenuBarIcon,
                AwakeText::tr("Show a dedicated coffee-cup menu-bar icon"),
                AwakeText::tr(
                    "Click it to toggle Awake; right-click for durations — just like the Caffeine app."))}),
        section(AwakeText::tr("Startup"), QStringLiteral("power"),
                {toggleRow(settings, &Settings::awakeOnLaunch,
                           AwakeText::tr("Start keeping awake when this feature turns on"))}),
        OrvaCalloutText{AwakeText::tr("Use the coffee-cup icon, the Orvane menu, or a keyboard shortcut to "
                                      "flip Awake on and off from anywhere.")},
    }};
}

} // namespace orvane::AwakeSettingsPane
