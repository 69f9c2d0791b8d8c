#include "Capabilities/ImageResizer/ResizerRows.h"

#include "Capabilities/ImageResizer/ImageResizerText.h"
#include "Capabilities/ImageResizer/ResizerNumberFieldView.h"
#include "OrvaneKit/Model/OrvaLayout.h"

#include <cmath>

namespace orvane {

namespace {

using Settings = ImageResizerSettings;

AnyView plainText(const QString& text)
{
    return OrvaText{.text = text, .color = OrvaColor::secondary};
}

AnyView customSize(const std::shared_ptr<Settings>& settings)
{
    const auto field = [&settings](const QString& prompt, const QString& name,
                                   Setting<int> Settings::*value) {
        return AnyView(ResizerNumberField{prompt, name, bind(settings, value)});
    };
    return OrvaRow{
        .content = {OrvaRowLabel{ImageResizerText::tr("Max size")}, OrvaSpacer{},
                    field(ImageResizerText::tr("W", "width"), ImageResizerText::tr("Maximum width in pixels"),
                          &Settings::customWidth),
                    plainText(QStringLiteral("×")),
                    field(ImageResizerText::tr("H", "height"),
                          ImageResizerText::tr("Maximum height in pixels"), &Settings::customHeight),
                    plainText(ImageResizerText::tr("px", "pixels"))}};
}

} // namespace

QList<AnyView> ResizerRows::size(const std::shared_ptr<Settings>& settings)
{
    const auto isCustom = [](ResizePreset preset) { return preset == ResizePreset::custom; };
    return {
        pickerRow(settings, &Settings::preset, ImageResizerText::tr("Preset")),
        OrvaIf{live(settings, &Settings::preset, isCustom), customSize(settings)},
        toggleRow(settings, &Settings::allowUpscale, ImageResizerText::tr("Allow enlarging smaller images"))};
}

AnyView ResizerRows::format(const std::shared_ptr<Settings>& settings)
{
    return pickerRow(settings, &Settings::format, ImageResizerText::tr("Save as"));
}

AnyView ResizerRows::quality(const std::shared_ptr<Settings>& settings)
{
    const auto inPercent = [](double quality) {
        return ImageResizerText::tr("%1%", "percent").arg(std::lround(quality * 100));
    };
    const auto isJpeg = [](ResizeFormat format) { return format == ResizeFormat::jpeg; };
    return OrvaIf{live(settings, &Settings::format, isJpeg),
                  OrvaSliderRow{.title = ImageResizerText::tr("JPEG quality"),
                                .value = bind(settings, &Settings::quality),
                                .range = {0.3, 1.0},
                                .detail = live(settings, &Settings::quality, inPercent)}};
}

QWidget* makeOrvaWidget(const ResizerNumberField& field)
{
    return new ResizerNumberFieldView(field);
}

} // namespace orvane
