#include "Capabilities/MouseTools/MouseToolsSettingsPane.h"

#include "Capabilities/MouseTools/MouseToolsText.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::MouseToolsSettingsPane {

namespace {

using Settings = MouseToolsSettings;

QString inPercent(double share)
{
    return QStringLiteral("%1%").arg(std::trunc(share * 100) + 0.0, 0, 'f', 0);
}

} // namespace

AnyView make(const std::shared_ptr<MouseToolsSettings>& settings)
{
    const auto length = [&settings](Setting<double> Settings::*value, const QString& title,
                                    OrvaSliderRow::Range range) {
        return sliderRow(settings, value, title, range, MouseToolsText::tr("pt", "points"));
    };
    const auto share = [&settings](Setting<double> Settings::*value, const QString& title,
                                   OrvaSliderRow::Range range) {
        return OrvaSliderRow{.title = title,
                             .value = bind(settings, value),
                             .range = range,
                             .detail = live(settings, value, &inPercent)};
    };
    return OrvaPane{{
        section(MouseToolsText::tr("Find My Cursor"), QStringLiteral("cursorarrow.rays"),
                {toggleRow(settings, &Settings::doubleCtrlSpotlight,
                           MouseToolsText::tr("Flash a spotlight when I double-press Ctrl")),
                 length(&Settings::spotlightRadius, MouseToolsText::tr("Spotlight size"), {60, 220}),
                 share(&Settings::dimOpacity, MouseToolsText::tr("Dim amount"), {0.1, 0.85})},
                MouseToolsText::tr("Detecting the double-Ctrl gesture needs Input Monitoring; the shortcut "
                                   "works without it.")),
        section(MouseToolsText::tr("Crosshairs"), QStringLiteral("plus.viewfinder"),
                {length(&Settings::crosshairThickness, MouseToolsText::tr("Line thickness"), {1, 8}),
                 share(&Settings::crosshairOpacity, MouseToolsText::tr("Line opacity"), {0.2, 1})}),
        OrvaCalloutText{
            MouseToolsText::tr("Assign shortcuts above for the spotlight and crosshairs toggle.")},
    }};
}

} // namespace orvane::MouseToolsSettingsPane
