#include "Capabilities/ClipboardHistory/ClipboardHistoryCapability.h"

#include "Capabilities/ClipboardHistory/Capture/ClipboardWatcherService.h"
#include "Capabilities/ClipboardHistory/ClipboardHistorySettingsPane.h"

#include <algorithm>
#include <stdexcept>

namespace orvane {

namespace {

/// Seconds; bounds what a look at the pasteboard costs, whatever was stored.
constexpr double shortestPollInterval = 0.15;

const QString& actionID()
{
    static const QString id = QStringLiteral("clipboardhistory.show");
    return id;
}

const QString& symbolName()
{
    static const QString name = QStringLiteral("doc.on.clipboard");
    return name;
}

} // namespace

const CapabilityMetadata& ClipboardHistoryCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.clipboardhistory")},
        .displayName = QStringLiteral("Clipboard History"),
        .summary = QStringLiteral("Keep a searchable history of what you copy, and paste from a list — like "
                                  "Windows' Win+V."),
        .symbolName = symbolName(),
        .category = CapabilityCategory::system,
    };
    return metadata;
}

QList<PermissionRequirement> ClipboardHistoryCapability::permissionRequirements() const
{
    return {{SystemPermission::accessibility, PermissionRequirement::Level::optional,
             QStringLiteral("Automatically paste the chosen item into the active app.")}};
}

QList<HotkeyAction> ClipboardHistoryCapability::hotkeyActions()
{
    const std::weak_ptr<ClipboardHistoryCapability> weak = weak_from_this();
    return {HotkeyAction{actionID(), QStringLiteral("Show Clipboard History"), [weak] {
                             const auto self = weak.lock();
                             if (self && self->m_controller)
                                 self->m_controller->togglePanel();
                         }}};
}

Task<> ClipboardHistoryCapability::install(CapabilityContext context)
{
    const HistoryArchive archive{context.appInfo.supportDirectory};
    if (!archive.ensureDirectory()) {
        throw std::runtime_error(QStringLiteral("The folder for the clipboard history can't be created: %1")
                                     .arg(archive.directory)
                                     .toStdString());
    }
    co_return;
}

Task<> ClipboardHistoryCapability::activate(CapabilityContext context)
{
    const auto controller = this->controller(context);
    controller->loadHistory();
    m_service = std::make_shared<ClipboardWatcherService>(
        controller, std::max(controller->settings()->pollInterval.get(), shortestPollInterval));
    context.serviceHost->registerService(m_service);
    co_return;
}

Task<> ClipboardHistoryCapability::deactivate()
{
    if (m_service)
        m_service->stop();
    if (m_controller) {
        m_controller->endCaptures();
        m_controller->saveHistory();
        m_controller->panel().hide();
    }
    m_service.reset();
    co_return;
}

Task<> ClipboardHistoryCapability::uninstall(CapabilityContext context)
{
    if (m_controller)
        co_await m_controller->purge();
    context.preferences.removeAll();
    m_controller.reset();
}

AnyView ClipboardHistoryCapability::makeSettingsPane(CapabilityContext context)
{
    const auto controller = this->controller(context);
    return ClipboardHistorySettingsPane::make(controller->settings(), [weak = std::weak_ptr(controller)] {
        if (const auto kept = weak.lock())
            kept->clearHistory();
    });
}

QList<MenuBarItem> ClipboardHistoryCapability::menuBarContributions()
{
    if (!m_controller)
        return {};
    const std::weak_ptr<ClipboardHistoryController> weak = m_controller;
    return {MenuBarItem{actionID(), QStringLiteral("Clipboard History…"), symbolName(), [weak] {
                            if (const auto controller = weak.lock())
                                controller->togglePanel();
                        }}};
}

std::shared_ptr<ClipboardHistoryController>
ClipboardHistoryCapability::controller(const CapabilityContext& context)
{
    if (!m_controller) {
        m_controller =
            ClipboardHistoryController::make(std::make_shared<ClipboardHistorySettings>(context.preferences),
                                             context.appInfo.supportDirectory, context.logger);
    }
    return m_controller;
}

} // namespace orvane
