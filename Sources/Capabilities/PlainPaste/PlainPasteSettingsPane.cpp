#include "Capabilities/PlainPaste/PlainPasteSettingsPane.h"

#include "Capabilities/PlainPaste/PlainPasteText.h"
#include "OrvaneKit/Model/OrvaSettingRows.h"

namespace orvane::PlainPasteSettingsPane {

AnyView make(const std::shared_ptr<PlainPasteSettings>& settings)
{
    return OrvaPane{{
        section(PlainPasteText::tr("Behavior"), QStringLiteral("doc.plaintext"),
                {toggleRow(settings, &PlainPasteSettings::autoPaste,
                           PlainPasteText::tr("Paste automatically after stripping formatting"),
                           PlainPasteText::tr("Auto-paste needs Accessibility permission. When off, your "
                                              "clipboard is cleaned and you press ⌘V yourself."))}),
        OrvaCalloutText{PlainPasteText::tr(
            "Assign a shortcut above (a common choice is ⇧⌘V) to paste clean text anywhere.")},
    }};
}

} // namespace orvane::PlainPasteSettingsPane
