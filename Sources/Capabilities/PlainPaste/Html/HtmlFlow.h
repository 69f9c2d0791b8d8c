// Lays the text of an HTML document out in lines, as far as a plain text can: white space, line breaks,
// cells and the marks of lists.
#pragma once

#include "Capabilities/PlainPaste/Html/HtmlElements.h"
#include "Capabilities/PlainPaste/Text/VisibleText.h"

namespace orvane {

class HtmlFlow {
public:
    void text(QStringView text, HtmlWhiteSpace whiteSpace);
    void lineBreak();
    /// The begin or end of a block: what follows stands in a line of its own.
    void boundary();
    void beginRow();
    void endRow();
    /// Between two cells of a row; the lines of a cell before it end there.
    void nextCell();
    /// Stands before the first text of a list's item; an item without text has none.
    void setMarker(const QString& marker) { m_marker = marker; }
    void dropMarker() { m_marker.clear(); }
    /// The text, without the line breaks at its end.
    QString take();

private:
    [[nodiscard]] bool isAtLineBegin() const;
    void writeLineBreaks();
    void put(QChar character);

    VisibleText m_text;
    QString m_marker;
    int m_lineBreaks = 0; // that come before the next text
    bool m_hasLineText = false;
    bool m_hasCells = false; // in the present line, with text or without
    bool m_hasSpace = false; // that comes before the next text, unless its line ends
};

} // namespace orvane
