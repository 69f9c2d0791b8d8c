#include "Capabilities/PlainPaste/Text/VisibleText.h"

namespace orvane {

namespace {

constexpr char16_t softHyphen = 0xAD;
constexpr char16_t byteOrderMark = 0xFEFF;

bool isShown(char16_t unit)
{
    if (unit < 0x20)
        return unit == u'\t' || unit == u'\n';
    return !(unit >= 0x7F && unit < 0xA0) && unit != softHyphen && unit != byteOrderMark && unit < 0xFFFE;
}

} // namespace

void VisibleText::append(QStringView text)
{
    for (const QChar character : text)
        append(character.unicode());
}

void VisibleText::append(char16_t unit)
{
    if (isShown(unit))
        m_text += QChar(unit);
}

QString VisibleText::take()
{
    const auto size = m_text.size();
    for (qsizetype at = 0; at < size; ++at) {
        if (!m_text.at(at).isSurrogate())
            continue;
        const bool isPair =
            m_text.at(at).isHighSurrogate() && at + 1 < size && m_text.at(at + 1).isLowSurrogate();
        if (isPair)
            ++at;
        else
            m_text[at] = QChar::ReplacementCharacter;
    }
    return std::exchange(m_text, {});
}

} // namespace orvane
