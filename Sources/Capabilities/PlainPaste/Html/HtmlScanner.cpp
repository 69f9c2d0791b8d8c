#include "Capabilities/PlainPaste/Html/HtmlScanner.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

bool isLetter(char character)
{
    const auto lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'z';
}

bool isSpace(char character)
{
    return character == ' ' || character == '\n' || character == '\t' || character == '\f';
}

bool endsName(char character)
{
    return isSpace(character) || character == '/' || character == '>';
}

} // namespace

std::optional<HtmlToken> HtmlScanner::next()
{
    while (!atEnd()) {
        if (!m_rawTextName.isEmpty()) {
            HtmlToken token = rawText();
            if (!token.text.isEmpty())
                return token;
            continue;
        }
        if (m_document[m_at] != '<')
            return textUntil(m_document.indexOf('<', m_at));
        const bool isEnd = at(1) == '/';
        if (isLetter(at(isEnd ? 2 : 1)))
            return tag(isEnd ? HtmlToken::Kind::endTag : HtmlToken::Kind::beginTag);
        if (!skipMarkup())
            return textUntil(m_at + 1);
    }
    return std::nullopt;
}

char HtmlScanner::at(qsizetype offset) const
{
    return m_at + offset < m_document.size() ? m_document[m_at + offset] : '\0';
}

HtmlToken HtmlScanner::textUntil(qsizetype end)
{
    const qsizetype begin = std::exchange(m_at, end < 0 ? m_document.size() : end);
    return {.kind = HtmlToken::Kind::text, .text = m_document.sliced(begin, m_at - begin)};
}

HtmlToken HtmlScanner::rawText()
{
    const QByteArray name = std::exchange(m_rawTextName, {});
    qsizetype end = m_document.indexOf("</", m_at);
    for (; end >= 0; end = m_document.indexOf("</", end + 2)) {
        const QByteArrayView tail = m_document.sliced(end + 2);
        if (tail.size() <= name.size() || !endsName(tail[name.size()]))
            continue;
        if (tail.first(name.size()).compare(name, Qt::CaseInsensitive) == 0)
            break;
    }
    return textUntil(end);
}

/// Skips comments, declarations and what the standard treats as a comment. False when there is none of them.
bool HtmlScanner::skipMarkup()
{
    if (at(1) == '!' && at(2) == '-' && at(3) == '-') {
        if (at(4) == '>' || (at(4) == '-' && at(5) == '>'))
            m_at += at(4) == '>' ? 5 : 6;
        else
            skipBehind("-->", m_at + 4);
        return true;
    }
    const bool isEndWithoutName = at(1) == '/' && m_at + 2 < m_document.size();
    if (at(1) != '!' && at(1) != '?' && !isEndWithoutName)
        return false;
    skipBehind(">", m_at + 2);
    return true;
}

void HtmlScanner::skipBehind(QByteArrayView end, qsizetype from)
{
    const auto found = from < m_document.size() ? m_document.indexOf(end, from) : -1;
    m_at = found < 0 ? m_document.size() : found + end.size();
}

std::optional<HtmlToken> HtmlScanner::tag(HtmlToken::Kind kind)
{
    m_at += kind == HtmlToken::Kind::endTag ? 2 : 1;
    const qsizetype begin = m_at;
    while (!atEnd() && !endsName(m_document[m_at]))
        ++m_at;
    HtmlToken token{.kind = kind, .name = m_document.sliced(begin, m_at - begin).toByteArray().toLower()};
    while (!atEnd()) {
        skipSpace();
        if (at(0) == '>') {
            ++m_at;
            return token;
        }
        token.isSelfClosing = at(0) == '/';
        if (token.isSelfClosing)
            ++m_at;
        else if (!attribute(token))
            break;
    }
    m_at = m_document.size();
    return std::nullopt;
}

/// Returns false when the document ends too early.
bool HtmlScanner::attribute(HtmlToken& token)
{
    const qsizetype begin = m_at++; // an equals sign may begin a name
    while (!atEnd() && !endsName(m_document[m_at]) && m_document[m_at] != '=')
        ++m_at;
    const QByteArrayView name =
        m_document.sliced(std::min(begin, m_document.size()), std::min(m_at, m_document.size()) - begin);
    skipSpace();
    QByteArrayView value("");
    if (at(0) == '=') {
        ++m_at;
        const auto given = attributeValue();
        if (!given)
            return false;
        value = *given;
    }
    const auto is = [&](QByteArrayView known) { return name.compare(known, Qt::CaseInsensitive) == 0; };
    HtmlAttributes& attributes = token.attributes;
    if (is("style"))
        attributes.style = attributes.style.isNull() ? value : attributes.style;
    else if (is("start"))
        attributes.start = value;
    else if (is("value"))
        attributes.value = value;
    else if (is("hidden"))
        attributes.isHidden = true;
    else if (is("open"))
        attributes.isOpen = true;
    return true;
}

std::optional<QByteArrayView> HtmlScanner::attributeValue()
{
    skipSpace();
    if (atEnd())
        return std::nullopt;
    const char quote = m_document[m_at];
    const qsizetype begin = quote == '"' || quote == '\'' ? m_at + 1 : m_at;
    if (begin == m_at) {
        while (!atEnd() && !isSpace(m_document[m_at]) && m_document[m_at] != '>')
            ++m_at;
        return m_document.sliced(begin, m_at - begin);
    }
    const auto end = begin < m_document.size() ? m_document.indexOf(quote, begin) : -1;
    if (end < 0)
        return std::nullopt;
    m_at = end + 1;
    return m_document.sliced(begin, end - begin);
}

void HtmlScanner::skipSpace()
{
    while (!atEnd() && isSpace(m_document[m_at]))
        ++m_at;
}

} // namespace orvane
