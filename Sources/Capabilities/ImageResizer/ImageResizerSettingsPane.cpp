#include "Capabilities/ImageResizer/ImageResizerSettingsPane.h"

#include "Capabilities/ImageResizer/ResizerRows.h"

namespace orvane::ImageResizerSettingsPane {

AnyView make(const std::shared_ptr<ResizerWindowController>& controller)
{
    const auto& settings = controller->settings();
    return OrvaPane{{
        section(QStringLiteral("Resize to"), QStringLiteral("arrow.down.right.and.arrow.up.left"),
                ResizerRows::size(settings)),
        section(QStringLiteral("Save as"), QStringLiteral("photo"), {ResizerRows::format(settings)}),
        OrvaCalloutText{QStringLiteral(
            "Open the resizer (here, a shortcut, or the menu bar), drop images in, and resize. "
            "Resized copies are saved next to the originals.")},
        OrvaCard{{OrvaRow{.content = {OrvaButton{.title = QStringLiteral("Open Image Resizer"),
                                                 .action = [controller] { controller->show(); },
                                                 .systemImage = QStringLiteral("photo.on.rectangle.angled")},
                                      OrvaSpacer{}}}}},
    }};
}

} // namespace orvane::ImageResizerSettingsPane
