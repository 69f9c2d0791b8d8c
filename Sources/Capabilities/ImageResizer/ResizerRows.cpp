#include "Capabilities/ImageResizer/ResizerRows.h"

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
    const auto field = [&settings](const char* prompt, const char* name, Setting<int> Settings::*value) {
        return AnyView(ResizerNumberField{QString::fromLatin1(prompt), QString::fromLatin1(name),
                                          bind(settings, value)});
    };
    return OrvaRow{.content = {OrvaRowLabel{QStringLiteral("Max size")}, OrvaSpacer{},
                               field("W", "Maximum width in pixels", &Settings::customWidth),
                               plainText(QStringLiteral("×")),
                               field("H", "Maximum height in pixels", &Settings::customHeight),
                               plainText(QStringLiteral("px"))}};
}

} // namespace

QList<AnyView> ResizerRows::size(const std::shared_ptr<Settings>& settings)
{
    const auto isCustom = [](ResizePreset preset) { return preset == ResizePreset::custom; };
    return {pickerRow(settings, &Settings::preset, QStringLiteral("Preset")),
            OrvaIf{live(settings, &Settings::preset, isCustom), customSize(settings)},
            toggleRow(settings, &Settings::allowUpscale, QStringLiteral("Allow enlarging smaller images"))};
}

AnyView ResizerRows::format(const std::shared_ptr<Settings>& settings)
{
    return pickerRow(settings, &Settings::format, QStringLiteral("Save as"));
}

AnyView ResizerRows::quality(const std::shared_ptr<Settings>& settings)
{
    const auto inPercent = [](double quality) {
        return QStringLiteral("%1%").arg(std::lround(quality * 100));
    };
    const auto isJpeg = [](ResizeFormat format) { return format == ResizeFormat::jpeg; };
    return OrvaIf{live(settings, &Settings::format, isJpeg),
                  OrvaSliderRow{.title = QStringLiteral("JPEG quality"),
                                .value = bind(settings, &Settings::quality),
                                .range = {0.3, 1.0},
                                .detail = live(settings, &Settings::quality, inPercent)}};
}

QWidget* makeOrvaWidget(const ResizerNumberField& field)
{
    return new ResizerNumberFieldView(field);
}

} // namespace orvane
