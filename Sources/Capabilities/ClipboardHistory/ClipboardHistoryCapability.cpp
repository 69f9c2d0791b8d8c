#include "Capabilities/ClipboardHistory/ClipboardHistoryCapability.h"

#include "Capabilities/ClipboardHistory/Capture/ClipboardWatcherService.h"
#include "Capabilities/ClipboardHistory/ClipboardHistorySettingsPane.h"
#include "Capabilities/ClipboardHistory/ClipboardHistoryText.h"
#include "Platform/Pasteboard.h"
#include "Platform/Platform.h"

namespace orvane {

namespace {

const QString actionID = QStringLiteral("clipboardhistory.show");
const QString symbolName = QStringLiteral("doc.on.clipboard");

} // namespace

const CapabilityMetadata& ClipboardHistoryCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.clipboardhistory")},
        .displayName = ClipboardHistoryText::tr("Clipboard History"),
        .summary = ClipboardHistoryText::tr(
            "Keep a searchable history of what you copy, and paste from a list — like "
            "Windows' Win+V."),
        .symbolName = symbolName,
        .category = CapabilityCategory::system,
    };
    return metadata;
}

QList<PermissionRequirement> ClipboardHistoryCapability::permissionRequirements() const
{
    return {{SystemPermission::accessibility, PermissionRequirement::Level::optional,
             ClipboardHistoryText::tr("Automatically paste the chosen item into the active app.")}};
}

QList<HotkeyAction> ClipboardHistoryCapability::hotkeyActions()
{
    return {{actionID, ClipboardHistoryText::tr("Show Clipboard History"),
             withController(&ClipboardHistoryController::togglePanel)}};
}

QList<MenuBarItem> ClipboardHistoryCapability::menuBarContributions()
{
    if (!controller())
        return {};
    return {{actionID, ClipboardHistoryText::tr("Clipboard History…"), symbolName,
             withController(&ClipboardHistoryController::togglePanel)}};
}

Task<> ClipboardHistoryCapability::install(CapabilityContext context)
{
    HistoryArchive{context.appInfo.supportDirectory}.requireDirectory();
    co_return;
}

Task<> ClipboardHistoryCapability::activate(CapabilityContext context)
{
    refuseHalfWork();
    controller(context)->loadHistory();
    return ControllerCapability::activate(std::move(context));
}

Task<> ClipboardHistoryCapability::deactivate()
{
    co_await ControllerCapability::deactivate();
    if (controller())
        controller()->suspend();
}

Task<> ClipboardHistoryCapability::uninstall(CapabilityContext context)
{
    if (controller())
        co_await controller()->purge();
    co_await ControllerCapability::uninstall(std::move(context));
}

QString ClipboardHistoryCapability::limitation() const
{
    return platform().generalPasteboard.limitation();
}

std::shared_ptr<ClipboardHistoryController>
ClipboardHistoryCapability::makeController(const CapabilityContext& context)
{
    return ClipboardHistoryController::make(std::make_shared<ClipboardHistorySettings>(context.preferences),
                                            context.appInfo.supportDirectory, context.logger);
}

AnyView ClipboardHistoryCapability::makePane(const std::shared_ptr<ClipboardHistoryController>& controller)
{
    return ClipboardHistorySettingsPane::make(controller->settings(),
                                              withController(&ClipboardHistoryController::clearHistory));
}

ClipboardHistoryCapability::Services
ClipboardHistoryCapability::makeServices(const std::shared_ptr<ClipboardHistoryController>& controller)
{
    return {
        std::make_shared<ClipboardWatcherService>(controller, controller->settings()->flooredPollInterval())};
}

} // namespace orvane
