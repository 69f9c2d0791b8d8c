#include "Capabilities/DailyFrame/DailyFrameCapability.h"

#include "Capabilities/DailyFrame/DailyFrameSettingsPane.h"
#include "Capabilities/DailyFrame/DailyFrameText.h"
#include "Platform/Platform.h"

namespace orvane {

const CapabilityMetadata& DailyFrameCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.dailyframe")},
        .displayName = DailyFrameText::tr("Daily Wallpaper"),
        .summary =
            DailyFrameText::tr("Freshen your desktop with a new wallpaper every day from Bing or Unsplash."),
        .symbolName = QStringLiteral("photo.artframe"),
        .category = CapabilityCategory::desktop,
    };
    return metadata;
}

QList<HotkeyAction> DailyFrameCapability::hotkeyActions()
{
    return {{QStringLiteral("dailyframe.newWallpaper"), DailyFrameText::tr("New Wallpaper Now"),
             withController(&DailyFrameController::changeNow)}};
}

QList<MenuBarItem> DailyFrameCapability::menuBarContributions()
{
    if (!controller())
        return {};
    return {{QStringLiteral("dailyframe.change"), DailyFrameText::tr("New Wallpaper Now"),
             QStringLiteral("arrow.triangle.2.circlepath"),
             withController(&DailyFrameController::changeNow)}};
}

std::shared_ptr<DailyFrameController> DailyFrameCapability::makeController(const CapabilityContext& context)
{
    const Platform& system = platform();
    return std::make_shared<DailyFrameController>(
        std::make_shared<DailyFrameSettings>(context.preferences),
        WallpaperManager(system.desktopPicture, system.pictures, system.fileManager), context.logger);
}

AnyView DailyFrameCapability::makePane(const std::shared_ptr<DailyFrameController>& controller)
{
    return DailyFrameSettingsPane::make(controller);
}

} // namespace orvane
