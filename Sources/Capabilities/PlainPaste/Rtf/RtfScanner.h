// Cuts an RTF document into its tokens, in one pass and without copying. Any bytes are allowed.
#pragma once

#include <QByteArrayView>

#include <optional>

namespace orvane {

struct RtfToken {
    enum class Kind {
        groupBegin,
        groupEnd,
        word,   // \name or \nameN
        symbol, // \ and one other character
        byte,   // a character of the text, or \'hh
        binary, // the data that \bin announces, left out already
    };

    Kind kind;
    QByteArrayView name = {};
    /// A number beyond the range of int is the nearest one.
    std::optional<int> parameter = std::nullopt;
    /// The symbol, or the byte.
    char character = 0;
};

class RtfScanner {
public:
    explicit RtfScanner(QByteArrayView document) : m_document(document) {}

    /// Returns nothing at the end.
    std::optional<RtfToken> next();

private:
    [[nodiscard]] bool atEnd() const { return m_at >= m_document.size(); }
    RtfToken control();
    RtfToken word();
    RtfToken hexadecimal();
    std::optional<int> parameter();

    QByteArrayView m_document;
    qsizetype m_at = 0;
};

} // namespace orvane
