#include "Capabilities/PlainPaste/PlainPasteCapability.h"

#include "Capabilities/PlainPaste/PlainPasteController.h"
#include "Capabilities/PlainPaste/PlainPasteSettingsPane.h"

namespace orvane {

namespace {

const QString& actionID()
{
    static const QString id = QStringLiteral("plainpaste.paste");
    return id;
}

const QString& actionTitle()
{
    static const QString title = QStringLiteral("Paste as Plain Text");
    return title;
}

} // namespace

const CapabilityMetadata& PlainPasteCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.plainpaste")},
        .displayName = QStringLiteral("Paste as Plain Text"),
        .summary = QStringLiteral(
            "A hotkey that pastes your clipboard with all fonts, colors, and styles stripped away."),
        .symbolName = QStringLiteral("doc.plaintext"),
        .category = CapabilityCategory::system,
    };
    return metadata;
}

QList<PermissionRequirement> PlainPasteCapability::permissionRequirements() const
{
    return {{SystemPermission::accessibility, PermissionRequirement::Level::optional,
             QStringLiteral("Paste the cleaned text automatically. Without it, the clipboard is cleaned and "
                            "you press ⌘V.")}};
}

QList<HotkeyAction> PlainPasteCapability::hotkeyActions()
{
    const std::weak_ptr<PlainPasteCapability> weak = weak_from_this();
    return {HotkeyAction{actionID(), actionTitle(), [weak] {
                             const auto self = weak.lock();
                             if (self && self->m_controller)
                                 self->m_controller->pasteAsPlainText();
                         }}};
}

Task<> PlainPasteCapability::activate(CapabilityContext context)
{
    controller(context);
    co_return;
}

Task<> PlainPasteCapability::deactivate()
{
    co_return;
}

Task<> PlainPasteCapability::uninstall(CapabilityContext context)
{
    context.preferences.removeAll();
    m_controller.reset();
    co_return;
}

AnyView PlainPasteCapability::makeSettingsPane(CapabilityContext context)
{
    return PlainPasteSettingsPane::make(controller(context)->settings());
}

QList<MenuBarItem> PlainPasteCapability::menuBarContributions()
{
    if (!m_controller)
        return {};
    const std::weak_ptr<PlainPasteController> weak = m_controller;
    return {MenuBarItem{actionID(), actionTitle(), QStringLiteral("doc.plaintext"), [weak] {
                            if (const auto controller = weak.lock())
                                controller->pasteAsPlainText();
                        }}};
}

std::shared_ptr<PlainPasteController> PlainPasteCapability::controller(const CapabilityContext& context)
{
    if (!m_controller) {
        m_controller = PlainPasteController::make(std::make_shared<PlainPasteSettings>(context.preferences),
                                                  context.logger);
    }
    return m_controller;
}

} // namespace orvane
