#include "Capabilities/DailyFrame/DailyFrameSettingsPane.h"

#include "Capabilities/DailyFrame/DailyFrameRows.h"
#include "Capabilities/DailyFrame/DailyFrameText.h"
#include "Capabilities/DailyFrame/WallpaperPreviewView.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane {

AnyView DailyFrameSettingsPane::make(const std::shared_ptr<DailyFrameController>& controller)
{
    using Settings = DailyFrameSettings;
    const auto& settings = controller->settings();
    return OrvaPane{{
        OrvaVStack{8, {WallpaperPreview{controller}, DailyFrameRows::credit(controller)}},
        DailyFrameRows::buttons(controller),
        DailyFrameRows::banner(controller),
        section(DailyFrameText::tr("Source"), QStringLiteral("photo.on.rectangle.angled"),
                {DailyFrameRows::sourcePicker(controller), DailyFrameRows::regionPicker(controller)}),
        section(
            DailyFrameText::tr("Options"), QStringLiteral("slider.horizontal.3"),
            {DailyFrameRows::allDisplaysToggle(controller),
             toggleRow(settings, &Settings::showCredit, DailyFrameText::tr("Show photo credit")),
             toggleRow(settings, &Settings::saveToFolder, DailyFrameText::tr("Save a copy to Pictures"))}),
    }};
}

} // namespace orvane
