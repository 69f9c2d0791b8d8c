#include "Capabilities/PlainPaste/PlainPasteCapability.h"

#include "Capabilities/PlainPaste/PlainPasteSettingsPane.h"
#include "Capabilities/PlainPaste/PlainPasteText.h"
#include "Platform/Pasteboard.h"
#include "Platform/Platform.h"

namespace orvane {

namespace {

const QString actionID = QStringLiteral("plainpaste.paste");
const QString actionTitle = PlainPasteText::tr("Paste as Plain Text");

} // namespace

const CapabilityMetadata& PlainPasteCapability::metadata()
{
    static const CapabilityMetadata metadata{
        .id = {QStringLiteral("net.lindenrow.orvane.plainpaste")},
        .displayName = PlainPasteText::tr("Paste as Plain Text"),
        .summary = PlainPasteText::tr(
            "A hotkey that pastes your clipboard with all fonts, colors, and styles stripped away."),
        .symbolName = QStringLiteral("doc.plaintext"),
        .category = CapabilityCategory::system,
    };
    return metadata;
}

QList<PermissionRequirement> PlainPasteCapability::permissionRequirements() const
{
    return {
        {SystemPermission::accessibility, PermissionRequirement::Level::optional,
         PlainPasteText::tr("Paste the cleaned text automatically. Without it, the clipboard is cleaned and "
                            "you press ⌘V.")}};
}

QList<HotkeyAction> PlainPasteCapability::hotkeyActions()
{
    return {{actionID, actionTitle, withController(&PlainPasteController::pasteAsPlainText)}};
}

QList<MenuBarItem> PlainPasteCapability::menuBarContributions()
{
    if (!controller())
        return {};
    return {{actionID, actionTitle, QStringLiteral("doc.plaintext"),
             withController(&PlainPasteController::pasteAsPlainText)}};
}

QString PlainPasteCapability::limitation() const
{
    return platform().generalPasteboard.limitation();
}

std::shared_ptr<PlainPasteController> PlainPasteCapability::makeController(const CapabilityContext& context)
{
    return PlainPasteController::make(std::make_shared<PlainPasteSettings>(context.preferences),
                                      context.logger);
}

AnyView PlainPasteCapability::makePane(const std::shared_ptr<PlainPasteController>& controller)
{
    return PlainPasteSettingsPane::make(controller->settings());
}

} // namespace orvane
