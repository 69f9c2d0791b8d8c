#include "Capabilities/ColorPicker/ColorPickerSettingsPane.h"

#include "Capabilities/ColorPicker/ColorPickerText.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::ColorPickerSettingsPane {

AnyView make(const std::shared_ptr<ColorPickerSettings>& settings)
{
    using Settings = ColorPickerSettings;
    return OrvaPane{{
        section(ColorPickerText::tr("Format"), QStringLiteral("number"),
                {pickerRow(settings, &Settings::format, ColorPickerText::tr("Copy color as"))}),
        OrvaCalloutText{
            ColorPickerText::tr("Assign a shortcut above, then point at any pixel and click to copy "
                                "its color. Press Esc to cancel.")},
    }};
}

} // namespace orvane::ColorPickerSettingsPane
