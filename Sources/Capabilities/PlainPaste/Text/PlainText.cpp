#include "Capabilities/PlainPaste/Text/PlainText.h"

#include "Capabilities/PlainPaste/Html/HtmlText.h"
#include "Capabilities/PlainPaste/Rtf/RtfText.h"

namespace orvane::PlainText {

QStringList types()
{
    return {pasteboardType::string, pasteboardType::rtf, pasteboardType::html};
}

std::optional<QString> from(const PasteboardContents& contents)
{
    if (auto string = contents.stringForType(pasteboardType::string))
        return string;
    if (const auto rtf = contents.dataForType(pasteboardType::rtf)) {
        if (auto text = RtfText::decode(*rtf))
            return text;
    }
    if (const auto html = contents.dataForType(pasteboardType::html))
        return HtmlText::decode(*html);
    return std::nullopt;
}

} // namespace orvane::PlainText
