// Collects the text of a document as it may stand in a plain one: whole characters, no control characters
// but tabs and line feeds, nothing that is only a hint for a layout.
#pragma once

#include <QString>
#include <QStringView>

namespace orvane {

class VisibleText {
public:
    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty(); }
    /// The last character; null of an empty text.
    [[nodiscard]] QChar last() const { return m_text.isEmpty() ? QChar() : m_text.back(); }

    void append(QStringView text);
    void append(char16_t unit);
    /// The text; half a surrogate pair in it has become U+FFFD.
    QString take();

private:
    QString m_text;
};

} // namespace orvane
