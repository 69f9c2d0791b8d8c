#include "Capabilities/ColorPicker/ColorPickerCapability.h"

#include "Capabilities/ColorPicker/ColorPickerSettingsPane.h"
#include "Capabilities/ColorPicker/ColorPickerText.h"

namespace orvane {

const CapabilityMetadata& ColorPickerCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.colorpicker")},
        .displayName = ColorPickerText::tr("Color Picker"),
        .summary =
            ColorPickerText::tr("Pick any color on screen with a magnifier and copy it as HEX, RGB, or HSL."),
        .symbolName = QStringLiteral("eyedropper.halffull"),
        .category = CapabilityCategory::system,
    };
    return metadata;
}

QList<PermissionRequirement> ColorPickerCapability::permissionRequirements() const
{
    return {{SystemPermission::screenRecording, PermissionRequirement::Level::required,
             ColorPickerText::tr("Read the pixels under your cursor to sample their color.")}};
}

QList<HotkeyAction> ColorPickerCapability::hotkeyActions()
{
    return {{ColorPickerController::actionID(), ColorPickerText::tr("Pick a Color"),
             withController(&ColorPickerController::pick)}};
}

QList<MenuBarItem> ColorPickerCapability::menuBarContributions()
{
    if (!controller())
        return {};
    return {{ColorPickerController::actionID(), ColorPickerText::tr("Pick a Color"),
             QStringLiteral("eyedropper.halffull"), withController(&ColorPickerController::pick)}};
}

std::shared_ptr<ColorPickerController> ColorPickerCapability::makeController(const CapabilityContext& context)
{
    return std::make_shared<ColorPickerController>(std::make_shared<ColorPickerSettings>(context.preferences),
                                                   context.logger);
}

AnyView ColorPickerCapability::makePane(const std::shared_ptr<ColorPickerController>& controller)
{
    return ColorPickerSettingsPane::make(controller->settings());
}

} // namespace orvane
