// Keeps the open elements of an HTML document, closes those whose end is implied, and lays out the visible
// text.
#pragma once

#include "Capabilities/PlainPaste/Html/HtmlElements.h"
#include "Capabilities/PlainPaste/Html/HtmlFlow.h"
#include "Capabilities/PlainPaste/Html/HtmlScanner.h"

#include <QHash>

#include <vector>

namespace orvane {

class HtmlReader {
public:
    void beginTag(const HtmlToken& tag);
    void endTag(const QByteArray& name);
    void text(QStringView text);
    QString take();

    /// Elements inside so many others count for their breaks and their text alone.
    static constexpr std::size_t maximumDepth = 512;

    /// Returns how many elements were looked at in search of one to close.
    [[nodiscard]] qint64 cost() const { return m_cost; }

private:
    struct Element {
        QByteArray name;
        HtmlElement kind = HtmlElement::inlineText;
        bool isShown = true;
        bool isVisible = true;
        HtmlWhiteSpace whiteSpace = HtmlWhiteSpace::collapsed;
        bool hasListMarker = true;
    };
    struct List {
        bool isOrdered;
        int next = 1;
    };

    void flatten(const HtmlToken& tag, HtmlElement kind);
    void breakFlattened(HtmlElement kind);
    static HtmlElement kind(const HtmlToken& tag, const HtmlStyle& style);
    void closeImplied(const QByteArray& name, HtmlElement kind);
    template <typename Wanted, typename Border>
    std::optional<std::size_t> innermost(Wanted wanted, Border border);
    void closeFrom(std::size_t index);
    void closeInnermost();
    void begin(const Element& element, const HtmlAttributes& attributes);
    void beginItem(const Element& element, const HtmlAttributes& attributes);

    HtmlFlow m_flow;
    std::vector<Element> m_elements;
    QHash<QByteArray, int> m_flattened; // how many of each name are open beyond the greatest depth
    std::vector<List> m_lists;
    std::vector<int> m_cellsOfRows; // the cells begun so far, for each open row
    bool m_isBeginOfPreformatted = false;
    qint64 m_cost = 0;
};

} // namespace orvane
