// Lays out the text of an HTML document in lines, as far as a plain text can: white space, line breaks, cells
// and the marks of lists.
#pragma once

#include "Capabilities/PlainPaste/Html/HtmlElements.h"
#include "Capabilities/PlainPaste/Text/VisibleText.h"

namespace orvane {

class HtmlFlow {
public:
    void text(QStringView text, HtmlWhiteSpace whiteSpace);
    void lineBreak();
    /// Marks the begin or end of a block: what follows stands in a line of its own.
    void boundary();
    void beginRow();
    void endRow();
    /// Comes between two cells of a row; the lines of the cell before it end there.
    void nextCell();
    /// Sets the mark before the first text of a list's item; an item without text has none.
    void setMarker(const QString& marker) { m_marker = marker; }
    void dropMarker() { m_marker.clear(); }
    /// Returns the text without the line breaks at its end.
    QString take();

private:
    [[nodiscard]] bool isAtLineBegin() const;
    void writeLineBreaks();
    void put(QChar character);

    VisibleText m_text;
    QString m_marker;
    int m_lineBreaks = 0; // to be written before the next text
    bool m_hasLineText = false;
    bool m_hasCells = false; // in the present line, with text or without
    bool m_hasSpace = false; // to be written before the next text, unless its line ends
};

} // namespace orvane
