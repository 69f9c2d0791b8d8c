#include "Capabilities/PlainPaste/Html/HtmlEncoding.h"

#include "Capabilities/PlainPaste/Text/CodePage.h"

#include <QByteArray>
#include <QStringDecoder>

#include <algorithm>

namespace orvane::HtmlEncoding {

namespace {

/// Browsers look no further for a declaration.
constexpr qsizetype declarationLimit = 1024;
constexpr int windowsLatin = 1252;

std::optional<QStringDecoder::Encoding> wideEncoding(QByteArrayView document)
{
    if (document.startsWith("\xFF\xFE"))
        return QStringDecoder::Utf16LE;
    if (document.startsWith("\xFE\xFF"))
        return QStringDecoder::Utf16BE;
    if (document.size() < 4 || document.size() % 2 != 0)
        return std::nullopt;
    const bool evenAreZero = document[0] == 0 && document[2] == 0;
    const bool oddAreZero = document[1] == 0 && document[3] == 0;
    if (evenAreZero == oddAreZero)
        return std::nullopt;
    return evenAreZero ? QStringDecoder::Utf16BE : QStringDecoder::Utf16LE;
}

bool endsLabel(char character)
{
    return character == '"' || character == '\'' || character == ';' || character == '>' ||
           character == '/' || character == ' ' || character == '\t' || character == '\r' ||
           character == '\n';
}

/// Returns the text after `charset=` in the tag, without its quotes.
QByteArrayView labelOf(QByteArrayView tag)
{
    const auto found = tag.indexOf("charset");
    if (found < 0)
        return {};
    QByteArrayView rest = tag.sliced(found + 7).trimmed();
    if (!rest.startsWith('='))
        return {};
    rest = rest.sliced(1).trimmed();
    if (rest.startsWith('"') || rest.startsWith('\''))
        rest = rest.sliced(1).trimmed();
    return rest.first(std::ranges::find_if(rest, endsLabel) - rest.begin());
}

std::optional<CodePage> declared(QByteArrayView document)
{
    const QByteArray begin =
        document.first(std::min(document.size(), declarationLimit)).toByteArray().toLower();
    const QByteArrayView view(begin);
    for (auto at = view.indexOf("<meta"); at >= 0; at = view.indexOf("<meta", at + 1)) {
        const auto end = view.indexOf('>', at);
        if (auto page = CodePage::labelled(labelOf(view.sliced(at, end < 0 ? view.size() - at : end - at))))
            return page;
    }
    return std::nullopt;
}

} // namespace

QString decode(QByteArrayView document)
{
    if (const auto wide = wideEncoding(document)) {
        QStringDecoder decoder(*wide);
        return decoder.decode(document);
    }
    if (document.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(document.sliced(3));
    if (const auto page = declared(document))
        return page->decode(document);
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(document);
    return decoder.hasError() ? CodePage::numbered(windowsLatin).decode(document) : text;
}

} // namespace orvane::HtmlEncoding
