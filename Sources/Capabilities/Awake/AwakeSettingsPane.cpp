#include "Capabilities/Awake/AwakeSettingsPane.h"

#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"

#include <QDateTime>

namespace orvane {

namespace {

QString shortTime(Clock::Date date, const QLocale& locale, const QTimeZone& timeZone)
{
    const auto milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(date.time_since_epoch()).count();
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(milliseconds, timeZone);
    QString format = locale.timeFormat(QLocale::ShortFormat);
    // The C locale and a few others count seconds even in their short format.
    format.remove(QLatin1String(":ss")).remove(QLatin1String(".ss"));
    return locale.toString(local.time(), format);
}

Binding<bool> isAwakeBinding(const std::shared_ptr<AwakeController>& controller)
{
    return Binding<bool>([controller] { return controller->isAwake.get(); },
                         [controller](bool on) {
                             if (on)
                                 controller->activate(controller->settings()->defaultDuration());
                             else
                                 controller->deactivate();
                         },
                         {std::shared_ptr<ObservableObject>(controller, &controller->isAwake)});
}

Live<QString> statusLine(const std::shared_ptr<AwakeController>& controller)
{
    return Live<QString>(
        [controller] {
            return AwakeSettingsPane::statusFootnote(controller->isAwake.get(), controller->expiresAt.get(),
                                                     QLocale::system(), QTimeZone::systemTimeZone());
        },
        {std::shared_ptr<ObservableObject>(controller, &controller->isAwake),
         std::shared_ptr<ObservableObject>(controller, &controller->expiresAt)});
}

QList<OrvaPickerOption> durationOptions()
{
    QList<OrvaPickerOption> options;
    for (const AwakeDuration duration : allAwakeDurations)
        options.append({title(duration), rawValue(duration)});
    return options;
}

} // namespace

AnyView AwakeSettingsPane::make(std::shared_ptr<AwakeController> controller)
{
    const std::shared_ptr<AwakeSettings> settings = controller->settings();
    return OrvaPane{{
        OrvaSection{
            .title = QStringLiteral("Keep Awake"),
            .systemImage = QStringLiteral("eye"),
            .footnote = statusLine(controller),
            .content = {OrvaToggleRow(
                            QStringLiteral("Keep my Mac awake now"), isAwakeBinding(controller),
                            QStringLiteral(
                                "Prevents display and system sleep without touching your power settings.")),
                        OrvaPickerRow{QStringLiteral("Duration"),
                                      bind(settings, &AwakeSettings::defaultDurationRaw), durationOptions()},
                        OrvaToggleRow(QStringLiteral("Keep the display awake too"),
                                      bind(settings, &AwakeSettings::keepDisplayAwake),
                                      QStringLiteral("Like Caffeine — stops the screen from dimming and "
                                                     "sleeping. Off keeps only the system awake."))}},
        OrvaSection{
            .title = QStringLiteral("Menu Bar"),
            .systemImage = QStringLiteral("menubar.arrow.up.rectangle"),
            .content = {OrvaToggleRow(QStringLiteral("Show a dedicated coffee-cup menu-bar icon"),
                                      bind(settings, &AwakeSettings::showMenuBarIcon),
                                      QStringLiteral("Click it to toggle Awake; right-click for durations — "
                                                     "just like the Caffeine app."))}},
        OrvaSection{
            .title = QStringLiteral("Startup"),
            .systemImage = QStringLiteral("power"),
            .content = {OrvaToggleRow(QStringLiteral("Start keeping awake when this feature turns on"),
                                      bind(settings, &AwakeSettings::awakeOnLaunch))}},
        OrvaCalloutText{QStringLiteral("Use the coffee-cup icon, the Orvane menu, or a keyboard shortcut to "
                                       "flip Awake on and off from anywhere.")},
    }};
}

QString AwakeSettingsPane::statusFootnote(bool isAwake, std::optional<Clock::Date> expiresAt,
                                          const QLocale& locale, const QTimeZone& timeZone)
{
    if (!isAwake)
        return QStringLiteral("Your Mac sleeps normally.");
    if (!expiresAt)
        return QStringLiteral("Awake until you turn it off.");
    return QStringLiteral("Awake until %1.").arg(shortTime(*expiresAt, locale, timeZone));
}

} // namespace orvane
