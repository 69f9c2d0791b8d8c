#include "Capabilities/PlainPaste/Rtf/RtfText.h"

#include "Capabilities/PlainPaste/Rtf/RtfReader.h"

namespace orvane::RtfText {

namespace {

QByteArrayView withoutLeadingSpace(QByteArrayView document)
{
    while (!document.isEmpty() && QByteArrayView(" \t\r\n").contains(document.front()))
        document = document.sliced(1);
    return document;
}

bool hasSignature(QByteArrayView document)
{
    RtfScanner scanner(document);
    const auto first = scanner.next();
    const auto second = scanner.next();
    return first && first->kind == RtfToken::Kind::groupBegin && second &&
           second->kind == RtfToken::Kind::word && second->name == QByteArrayView("rtf");
}

} // namespace

std::optional<QString> decode(QByteArrayView document)
{
    const QByteArrayView content = withoutLeadingSpace(document);
    if (document.size() > maximumSize || !hasSignature(content))
        return std::nullopt;
    RtfScanner scanner(content);
    RtfReader reader;
    while (const auto token = scanner.next()) {
        const auto progress = reader.take(*token);
        if (progress == RtfReader::Progress::tooDeep)
            return std::nullopt;
        if (progress == RtfReader::Progress::end)
            break;
    }
    return reader.finish();
}

} // namespace orvane::RtfText
