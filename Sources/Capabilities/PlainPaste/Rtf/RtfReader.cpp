#include "Capabilities/PlainPaste/Rtf/RtfReader.h"

#include "Capabilities/PlainPaste/Rtf/RtfText.h"

#include <algorithm>

namespace orvane {

namespace {

/// No document has as many; a table of them stays small.
constexpr std::size_t maximumFonts = 32768;
constexpr int maximumFallbackLength = 1024;

} // namespace

RtfReader::Progress RtfReader::take(const RtfToken& token)
{
    const bool wasOptional = m_isOptional;
    switch (token.kind) {
    case RtfToken::Kind::groupBegin:
        if (m_outer.size() >= RtfText::maximumDepth)
            return Progress::tooDeep;
        beginGroup();
        break;
    case RtfToken::Kind::groupEnd:
        return endGroup();
    case RtfToken::Kind::word:
        word(token);
        break;
    case RtfToken::Kind::symbol:
        symbol(token.character);
        break;
    case RtfToken::Kind::byte:
        byte(token.character);
        break;
    case RtfToken::Kind::binary:
        if (m_ignoredFallback > 0)
            --m_ignoredFallback;
        break;
    }
    if (wasOptional)
        m_isOptional = false;
    return Progress::more;
}

QString RtfReader::finish()
{
    writeBytes();
    QString text = m_text.take();
    if (text.endsWith(u'\n'))
        text.chop(1);
    return text;
}

void RtfReader::beginGroup()
{
    writeBytes();
    m_ignoredFallback = 0;
    m_outer.push_back(m_state);
}

RtfReader::Progress RtfReader::endGroup()
{
    writeBytes();
    m_ignoredFallback = 0;
    m_isOptional = false;
    if (m_outer.empty())
        return Progress::end;
    m_state = m_outer.back();
    m_outer.pop_back();
    return m_outer.empty() ? Progress::end : Progress::more;
}

void RtfReader::word(const RtfToken& token)
{
    if (m_ignoredFallback > 0) {
        --m_ignoredFallback;
        return;
    }
    const RtfWord word = rtfWord(token.name);
    const bool knowsOptional =
        word.meaning == RtfMeaning::unicodeAlternative || word.meaning == RtfMeaning::nestedRow;
    if (m_isOptional && !knowsOptional) {
        groupWord(RtfMeaning::skipped);
        return;
    }
    switch (word.meaning) {
    case RtfMeaning::none:
        break;
    case RtfMeaning::character:
        put(static_cast<char16_t>(word.value));
        break;
    case RtfMeaning::paragraphEnd:
        put(u'\n');
        break;
    case RtfMeaning::cellEnd:
        endCell();
        break;
    case RtfMeaning::rowEnd:
        endLine();
        break;
    case RtfMeaning::unicode:
        unicode(token.parameter.value_or(0));
        break;
    case RtfMeaning::hidden:
        writeBytes();
        m_state.isHidden = token.parameter.value_or(1) != 0;
        break;
    case RtfMeaning::plain:
        writeBytes();
        m_state.isHidden = false;
        m_state.font = -1;
        break;
    case RtfMeaning::fallbackLength:
        m_state.fallbackLength = std::clamp(token.parameter.value_or(1), 0, maximumFallbackLength);
        break;
    case RtfMeaning::codePage:
    case RtfMeaning::fixedCodePage:
    case RtfMeaning::defaultFont:
    case RtfMeaning::font:
    case RtfMeaning::fontCharacterSet:
    case RtfMeaning::fontCodePage:
        encodingWord(word, token.parameter.value_or(0));
        break;
    default:
        groupWord(word.meaning);
        break;
    }
}

void RtfReader::groupWord(RtfMeaning meaning)
{
    writeBytes();
    const Group outer = m_outer.empty() ? Group::text : m_outer.back().group;
    switch (meaning) {
    case RtfMeaning::fontTable:
        m_state.group = Group::fontTable;
        break;
    case RtfMeaning::alternatives:
        if (m_state.group == Group::text)
            m_state.group = Group::alternatives;
        break;
    case RtfMeaning::object:
        if (m_state.group == Group::text)
            m_state.group = Group::object;
        break;
    case RtfMeaning::unicodeAlternative:
        m_state.group = outer == Group::alternatives ? Group::text : Group::skipped;
        break;
    case RtfMeaning::objectResult:
        if (outer == Group::object)
            m_state.group = Group::text;
        break;
    case RtfMeaning::skipped:
        m_state.group = Group::skipped;
        break;
    default:
        break;
    }
}

void RtfReader::encodingWord(const RtfWord& word, int parameter)
{
    const auto definedFont = [this]() -> Font* {
        if (m_state.group != Group::fontTable || m_definedFont < 0)
            return nullptr;
        const auto known = m_fonts.find(m_definedFont);
        if (known != m_fonts.end())
            return &known->second;
        return m_fonts.size() < maximumFonts ? &m_fonts[m_definedFont] : nullptr;
    };
    writeBytes();
    switch (word.meaning) {
    case RtfMeaning::fixedCodePage:
        m_codePage = word.value;
        break;
    case RtfMeaning::codePage:
        m_codePage = parameter > 0 ? parameter : m_codePage;
        break;
    case RtfMeaning::defaultFont:
        m_defaultFont = parameter;
        break;
    case RtfMeaning::font:
        (m_state.group == Group::fontTable ? m_definedFont : m_state.font) = parameter;
        break;
    case RtfMeaning::fontCharacterSet:
        if (Font* font = definedFont()) {
            font->codePage = rtfCodePage(parameter);
            font->isSymbols = parameter == rtfSymbolCharacterSet;
        }
        break;
    default:
        if (Font* font = definedFont(); font && parameter > 0)
            font->codePage = parameter;
        break;
    }
}

void RtfReader::symbol(char symbol)
{
    if (symbol == '*') {
        m_isOptional = true;
        return;
    }
    if (m_ignoredFallback > 0) {
        --m_ignoredFallback;
        return;
    }
    switch (symbol) {
    case '\\':
    case '{':
    case '}':
        byte(symbol);
        break;
    case '\r':
    case '\n':
        put(u'\n');
        break;
    case '\t':
        put(u'\t');
        break;
    case '~':
        put(u'\u00A0');
        break;
    case '_':
        put(u'\u2011');
        break;
    default:
        break; // an optional hyphen, or a mark of an index
    }
}

void RtfReader::byte(char byte)
{
    if (m_ignoredFallback > 0) {
        --m_ignoredFallback;
        return;
    }
    if (!isShown())
        return;
    const Font current = font();
    if (current.isSymbols) {
        put(rtfSymbol(static_cast<unsigned char>(byte)));
        return;
    }
    m_bytesCodePage = current.codePage;
    m_bytes += byte;
}

void RtfReader::unicode(int number)
{
    m_ignoredFallback = m_state.fallbackLength;
    // The number is a signed one of 16 bits; some writers write it unsigned, or the whole character.
    const int value = number < 0 ? number + 0x10000 : number;
    if (value <= 0 || value > 0x10FFFF)
        return put(QChar::ReplacementCharacter);
    if (value > 0xFFFF) {
        put(QChar::highSurrogate(static_cast<char32_t>(value)));
        put(QChar::lowSurrogate(static_cast<char32_t>(value)));
        return;
    }
    const bool isSymbol = value >= 0xF020 && value <= 0xF0FF;
    put(isSymbol ? rtfSymbol(static_cast<unsigned char>(value - 0xF000)) : static_cast<char16_t>(value));
}

void RtfReader::put(char16_t unit)
{
    if (!isShown())
        return;
    writeBytes();
    writeCellEnd();
    m_text.append(unit);
}

void RtfReader::endCell()
{
    if (m_state.group != Group::text)
        return;
    writeBytes();
    writeCellEnd();
    m_hasCellEnd = true;
}

void RtfReader::endLine()
{
    if (m_state.group != Group::text)
        return;
    writeBytes();
    m_hasCellEnd = false;
    m_text.append(u'\n');
}

void RtfReader::writeCellEnd()
{
    if (std::exchange(m_hasCellEnd, false))
        m_text.append(u'\t');
}

void RtfReader::writeBytes()
{
    if (m_bytes.isEmpty())
        return;
    writeCellEnd();
    m_text.append(codePage(m_bytesCodePage).decode(m_bytes));
    m_bytes.clear();
}

RtfReader::Font RtfReader::font() const
{
    const auto known = m_fonts.find(m_state.font >= 0 ? m_state.font : m_defaultFont);
    Font font = known != m_fonts.end() ? known->second : Font{};
    if (font.codePage == 0)
        font.codePage = m_codePage;
    return font;
}

const CodePage& RtfReader::codePage(int number)
{
    // Opening a converter is slow, and a document may name any number of them.
    constexpr std::size_t maximumKept = 64;
    if (m_codePages.size() >= maximumKept && !m_codePages.contains(number))
        m_codePages.clear();
    const auto known = m_codePages.find(number);
    if (known != m_codePages.end())
        return known->second;
    return m_codePages.emplace(number, CodePage::numbered(number)).first->second;
}

} // namespace orvane
