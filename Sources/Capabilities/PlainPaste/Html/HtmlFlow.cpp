#include "Capabilities/PlainPaste/Html/HtmlFlow.h"

namespace orvane {

namespace {

/// A no-break space doesn't collapse.
bool isCollapsible(QChar character)
{
    return character == u' ' || character == u'\t' || character == u'\n' || character == u'\r' ||
           character == u'\f';
}

} // namespace

void HtmlFlow::text(QStringView text, HtmlWhiteSpace whiteSpace)
{
    for (const QChar character : text) {
        if (character == u'\n' && whiteSpace != HtmlWhiteSpace::collapsed)
            lineBreak();
        else if (isCollapsible(character) && whiteSpace != HtmlWhiteSpace::kept)
            m_hasSpace = !isAtLineBegin();
        else
            put(character);
    }
}

void HtmlFlow::lineBreak()
{
    ++m_lineBreaks;
    m_hasLineText = false;
    m_hasCells = false;
    m_hasSpace = false;
}

void HtmlFlow::boundary()
{
    m_hasSpace = false;
    if (m_hasLineText)
        lineBreak();
}

void HtmlFlow::beginRow()
{
    boundary();
    writeLineBreaks();
}

void HtmlFlow::endRow()
{
    if (m_hasLineText || m_hasCells)
        lineBreak();
}

void HtmlFlow::nextCell()
{
    m_lineBreaks = 0;
    m_hasSpace = false;
    m_marker.clear();
    m_text.append(u'\t');
    m_hasLineText = false;
    m_hasCells = true;
}

QString HtmlFlow::take()
{
    QString text = m_text.take();
    qsizetype length = text.size();
    while (length > 0 && text.at(length - 1) == u'\n')
        --length;
    text.truncate(length);
    return text;
}

bool HtmlFlow::isAtLineBegin() const
{
    const QChar last = m_text.last();
    return m_lineBreaks > 0 || last.isNull() || last == u'\n' || last == u'\t';
}

void HtmlFlow::writeLineBreaks()
{
    for (; m_lineBreaks > 0; --m_lineBreaks)
        m_text.append(u'\n');
}

void HtmlFlow::put(QChar character)
{
    writeLineBreaks();
    if (!m_marker.isEmpty())
        m_text.append(std::exchange(m_marker, {}));
    if (std::exchange(m_hasSpace, false))
        m_text.append(u' ');
    m_text.append(character.unicode());
    m_hasLineText = true;
}

} // namespace orvane
