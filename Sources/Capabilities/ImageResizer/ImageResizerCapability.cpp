#include "Capabilities/ImageResizer/ImageResizerCapability.h"

#include "Capabilities/ImageResizer/ImageResizerSettingsPane.h"
#include "Capabilities/ImageResizer/ImageResizerText.h"

namespace orvane {

namespace {

const QString actionID = QStringLiteral("imageresizer.open");

} // namespace

const CapabilityMetadata& ImageResizerCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.imageresizer")},
        .displayName = ImageResizerText::tr("Image Resizer"),
        .summary = ImageResizerText::tr(
            "Drop images and batch-resize them to a preset or custom size — saved next to the originals."),
        .symbolName = QStringLiteral("photo.on.rectangle.angled"),
        .category = CapabilityCategory::finder,
    };
    return metadata;
}

QList<HotkeyAction> ImageResizerCapability::hotkeyActions()
{
    return {{actionID, ImageResizerText::tr("Open Image Resizer"),
             withController(&ResizerWindowController::show)}};
}

QList<MenuBarItem> ImageResizerCapability::menuBarContributions()
{
    if (!controller())
        return {};
    return {{actionID, ImageResizerText::tr("Image Resizer…"), QStringLiteral("photo.on.rectangle.angled"),
             withController(&ResizerWindowController::show)}};
}

std::shared_ptr<ResizerWindowController>
ImageResizerCapability::makeController(const CapabilityContext& context)
{
    return std::make_shared<ResizerWindowController>(
        std::make_shared<ImageResizerSettings>(context.preferences));
}

AnyView ImageResizerCapability::makePane(const std::shared_ptr<ResizerWindowController>& controller)
{
    return ImageResizerSettingsPane::make(controller);
}

} // namespace orvane
