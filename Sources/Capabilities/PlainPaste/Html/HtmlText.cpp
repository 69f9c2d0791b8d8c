#include "Capabilities/PlainPaste/Html/HtmlText.h"

#include "Capabilities/PlainPaste/Html/HtmlCharacters.h"
#include "Capabilities/PlainPaste/Html/HtmlEncoding.h"
#include "Capabilities/PlainPaste/Html/HtmlReader.h"

namespace orvane::HtmlText {

namespace {

/// Limits the search for elements to close. Only a document made for it comes near the limit.
qint64 maximumCost(QByteArrayView document)
{
    constexpr qint64 least = 1'000'000;
    constexpr qint64 forEachByte = 4;
    return least + forEachByte * document.size();
}

QByteArray normalized(QString text)
{
    text.remove(QChar(u'\0'));
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    return text.toUtf8();
}

/// True if the element's content has no markup.
bool isRawText(const QByteArray& name)
{
    return name == "script" || name == "style" || name == "title" || name == "textarea" || name == "xmp" ||
           name == "iframe" || name == "noembed" || name == "noframes";
}

} // namespace

std::optional<QString> decode(QByteArrayView document)
{
    if (document.size() > maximumSize)
        return std::nullopt;
    const QByteArray utf8 = normalized(HtmlEncoding::decode(document));
    HtmlScanner scanner(utf8);
    HtmlReader reader;
    while (const auto token = scanner.next()) {
        switch (token->kind) {
        case HtmlToken::Kind::text:
            reader.text(HtmlCharacters::decode(token->text));
            break;
        case HtmlToken::Kind::beginTag:
            reader.beginTag(*token);
            if (isRawText(token->name) && !token->isSelfClosing)
                scanner.beginRawText(token->name);
            break;
        case HtmlToken::Kind::endTag:
            reader.endTag(token->name);
            break;
        }
        if (reader.cost() > maximumCost(utf8))
            return std::nullopt;
    }
    return reader.take();
}

} // namespace orvane::HtmlText
