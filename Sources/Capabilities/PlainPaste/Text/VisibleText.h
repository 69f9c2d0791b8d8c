// Collects the text of a document as a plain one: whole characters, no control characters but tabs and line
// feeds, and no characters that are only hints for a layout.
#pragma once

#include <QString>
#include <QStringView>

namespace orvane {

class VisibleText {
public:
    [[nodiscard]] bool isEmpty() const { return m_text.isEmpty(); }
    /// Returns the last character; null for an empty text.
    [[nodiscard]] QChar last() const { return m_text.isEmpty() ? QChar() : m_text.back(); }

    void append(QStringView text);
    void append(char16_t unit);
    /// Returns the text; half a surrogate pair in it has become U+FFFD.
    QString take();

private:
    QString m_text;
};

} // namespace orvane
