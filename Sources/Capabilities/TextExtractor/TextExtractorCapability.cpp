#include "Capabilities/TextExtractor/TextExtractorCapability.h"

#include "Capabilities/TextExtractor/TextExtractorSettingsPane.h"
#include "Capabilities/TextExtractor/TextExtractorText.h"

namespace orvane {

const CapabilityMetadata& TextExtractorCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.textextractor")},
        .displayName = TextExtractorText::tr("Text Extractor"),
        .summary =
            TextExtractorText::tr("Drag a box over any part of the screen to copy the text inside it (OCR)."),
        .symbolName = QStringLiteral("text.viewfinder"),
        .category = CapabilityCategory::system,
    };
    return metadata;
}

QList<PermissionRequirement> TextExtractorCapability::permissionRequirements() const
{
    return {{SystemPermission::screenRecording, PermissionRequirement::Level::required,
             TextExtractorText::tr("Capture the screen region you select so its text can be read.")}};
}

QList<HotkeyAction> TextExtractorCapability::hotkeyActions()
{
    return {{TextExtractorController::actionID(), TextExtractorText::tr("Extract Text from Screen"),
             withController(&TextExtractorController::extract)}};
}

QList<MenuBarItem> TextExtractorCapability::menuBarContributions()
{
    if (!controller())
        return {};
    return {{TextExtractorController::actionID(), TextExtractorText::tr("Extract Text from Screen"),
             QStringLiteral("text.viewfinder"), withController(&TextExtractorController::extract)}};
}

std::shared_ptr<TextExtractorController>
TextExtractorCapability::makeController(const CapabilityContext& context)
{
    return TextExtractorController::make(std::make_shared<TextExtractorSettings>(context.preferences),
                                         context.logger);
}

AnyView TextExtractorCapability::makePane(const std::shared_ptr<TextExtractorController>& controller)
{
    return TextExtractorSettingsPane::make(controller);
}

} // namespace orvane
