#include "Capabilities/PlainPaste/PlainPasteSettingsPane.h"

#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::PlainPasteSettingsPane {

AnyView make(const std::shared_ptr<PlainPasteSettings>& settings)
{
    return OrvaPane{{
        section(QStringLiteral("Behavior"), QStringLiteral("doc.plaintext"),
                {toggleRow(settings, &PlainPasteSettings::autoPaste,
                           QStringLiteral("Paste automatically after stripping formatting"),
                           QStringLiteral("Auto-paste needs Accessibility permission. When off, your "
                                          "clipboard is cleaned and you press ⌘V yourself."))}),
        OrvaCalloutText{
            QStringLiteral("Assign a shortcut above (a common choice is ⇧⌘V) to paste clean text anywhere.")},
    }};
}

} // namespace orvane::PlainPasteSettingsPane
