#include "Capabilities/PlainPaste/PlainPasteSettingsPane.h"

#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"

namespace orvane {

AnyView PlainPasteSettingsPane::make(std::shared_ptr<PlainPasteSettings> settings)
{
    return OrvaPane{{
        OrvaSection{
            .title = QStringLiteral("Behavior"),
            .systemImage = QStringLiteral("doc.plaintext"),
            .content = {OrvaToggleRow(
                QStringLiteral("Paste automatically after stripping formatting"),
                bind(settings, &PlainPasteSettings::autoPaste),
                QStringLiteral("Auto-paste needs Accessibility permission. When off, your clipboard is "
                               "cleaned and you press ⌘V yourself."))}},
        OrvaCalloutText{
            QStringLiteral("Assign a shortcut above (a common choice is ⇧⌘V) to paste clean text anywhere.")},
    }};
}

} // namespace orvane
