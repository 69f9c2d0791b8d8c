// Follows the groups and the state of an RTF document, and keeps the text that a reader would see.
#pragma once

#include "Capabilities/PlainPaste/Rtf/RtfScanner.h"
#include "Capabilities/PlainPaste/Rtf/RtfWords.h"
#include "Capabilities/PlainPaste/Text/CodePage.h"
#include "Capabilities/PlainPaste/Text/VisibleText.h"

#include <QByteArray>

#include <unordered_map>
#include <vector>

namespace orvane {

class RtfReader {
public:
    enum class Progress { more, end, tooDeep };

    Progress take(const RtfToken& token);
    QString finish();

private:
    enum class Group {
        text,
        skipped,
        fontTable,
        alternatives, // alternatives of the same text: the one in Unicode is kept
        object,       // an object whose result is kept
    };
    struct State {
        Group group = Group::text;
        bool isHidden = false;
        int font = -1; // -1: the document's
        int fallbackLength = 1;
    };
    struct Font {
        int codePage = 0; // 0: the document's
        bool isSymbols = false;
    };

    [[nodiscard]] bool isShown() const { return m_state.group == Group::text && !m_state.isHidden; }
    void beginGroup();
    Progress endGroup();
    void word(const RtfToken& token);
    void groupWord(RtfMeaning meaning);
    void encodingWord(const RtfWord& word, int parameter);
    void symbol(char symbol);
    void byte(char byte);
    void unicode(int number);
    void put(char16_t unit);
    void endCell();
    void endLine();
    void writeCellEnd();
    void writeBytes();
    [[nodiscard]] Font font() const;
    const CodePage& codePage(int number);

    VisibleText m_text;
    State m_state;
    std::vector<State> m_outer;
    int m_ignoredFallback = 0;
    bool m_isOptional = false; // \* has been read, and its word comes next
    bool m_hasCellEnd = false; // a cell has ended; it is written only if something follows in its row

    /// Bytes of one encoding: a character may have two of them, each written in another way.
    QByteArray m_bytes;
    int m_bytesCodePage = 0;

    int m_codePage = 1252;
    int m_defaultFont = -1;
    int m_definedFont = -1;
    std::unordered_map<int, Font> m_fonts;
    std::unordered_map<int, CodePage> m_codePages;
};

} // namespace orvane
