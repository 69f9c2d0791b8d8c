#include "Capabilities/ImageResizer/ImageResizerSettingsPane.h"

#include "Capabilities/ImageResizer/ImageResizerText.h"
#include "Capabilities/ImageResizer/ResizerRows.h"

namespace orvane::ImageResizerSettingsPane {

AnyView make(const std::shared_ptr<ResizerWindowController>& controller)
{
    const auto& settings = controller->settings();
    return OrvaPane{{
        section(ImageResizerText::tr("Resize to"), QStringLiteral("arrow.down.right.and.arrow.up.left"),
                ResizerRows::size(settings)),
        section(ImageResizerText::tr("Save as"), QStringLiteral("photo"), {ResizerRows::format(settings)}),
        OrvaCalloutText{ImageResizerText::tr(
            "Open the resizer (here, a shortcut, or the menu bar), drop images in, and resize. "
            "Resized copies are saved next to the originals.")},
        OrvaCard{{OrvaRow{.content = {OrvaButton{.title = ImageResizerText::tr("Open Image Resizer"),
                                                 .action = [controller] { controller->show(); },
                                                 .systemImage = QStringLiteral("photo.on.rectangle.angled")},
                                      OrvaSpacer{}}}}},
    }};
}

} // namespace orvane::ImageResizerSettingsPane
