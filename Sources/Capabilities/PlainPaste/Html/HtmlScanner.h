// Cuts an HTML document into text and tags, as the standard's tokenizer does, in one pass and without
// comparing attributes: the time is proportional to the size whatever the bytes are.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace orvane {

/// The attributes of an element that matter here: views into the document, null for an absent one.
struct HtmlAttributes {
    QByteArrayView style = {};
    QByteArrayView start = {};
    QByteArrayView value = {};
    bool isHidden = false;
    bool isOpen = false;
};

struct HtmlToken {
    enum class Kind { text, beginTag, endTag };

    Kind kind;
    /// Set for a text, with its character references.
    QByteArrayView text = {};
    /// Set for a tag, in lower case.
    QByteArray name = {};
    HtmlAttributes attributes = {};
    bool isSelfClosing = false;
};

class HtmlScanner {
public:
    /// `document` is in UTF-8, without carriage returns and zeros.
    explicit HtmlScanner(QByteArrayView document) : m_document(document) {}

    /// Returns nothing at the end. Comments, declarations and an unfinished tag are left out.
    std::optional<HtmlToken> next();
    /// Everything up to the end tag of this name is one text, which comes next.
    void beginRawText(const QByteArray& name) { m_rawTextName = name; }

private:
    [[nodiscard]] bool atEnd() const { return m_at >= m_document.size(); }
    [[nodiscard]] char at(qsizetype offset) const;
    HtmlToken textUntil(qsizetype end);
    HtmlToken rawText();
    bool skipMarkup();
    void skipBehind(QByteArrayView end, qsizetype from);
    std::optional<HtmlToken> tag(HtmlToken::Kind kind);
    bool attribute(HtmlToken& token);
    std::optional<QByteArrayView> attributeValue();
    void skipSpace();

    QByteArrayView m_document;
    qsizetype m_at = 0;
    QByteArray m_rawTextName;
};

} // namespace orvane
