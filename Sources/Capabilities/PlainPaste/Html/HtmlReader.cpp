#include "Capabilities/PlainPaste/Html/HtmlReader.h"

#include <algorithm>
#include <limits>

namespace orvane {

namespace {

/// Deeper lists aren't indented further.
constexpr std::size_t maximumIndent = 8;

bool isBlock(HtmlElement kind)
{
    return kind != HtmlElement::inlineText && kind != HtmlElement::lineBreak && kind != HtmlElement::hidden &&
           kind != HtmlElement::cell;
}

bool isList(HtmlElement kind)
{
    return kind == HtmlElement::list || kind == HtmlElement::orderedList;
}

bool isTablePart(const QByteArray& name)
{
    return name == "tr" || name == "td" || name == "th" || name == "tbody" || name == "thead" ||
           name == "tfoot" || name == "caption" || name == "table";
}

bool isVoid(const QByteArray& name)
{
    return name == "area" || name == "base" || name == "br" || name == "col" || name == "embed" ||
           name == "hr" || name == "img" || name == "input" || name == "link" || name == "meta" ||
           name == "param" || name == "source" || name == "track" || name == "wbr";
}

std::optional<int> number(QByteArrayView text)
{
    bool isNumber = false;
    const int value = text.trimmed().toByteArray().toInt(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

} // namespace

void HtmlReader::beginTag(const HtmlToken& tag)
{
    const HtmlStyle style = htmlStyle(tag.attributes.style);
    const HtmlElement tagKind = kind(tag, style);
    const bool hides = tagKind == HtmlElement::hidden && !m_elements.empty() && m_elements.back().isShown;
    if (m_elements.size() >= maximumDepth && !hides)
        return flatten(tag, tagKind);
    closeImplied(tag.name, tagKind);
    Element element = m_elements.empty() ? Element{} : m_elements.back();
    element.name = tag.name;
    element.kind = tagKind;
    if (element.kind == HtmlElement::preformatted)
        element.whiteSpace = HtmlWhiteSpace::kept;
    if (isList(element.kind))
        element.hasListMarker = true;
    element.isShown = element.isShown && element.kind != HtmlElement::hidden;
    element.isVisible = style.isVisible.value_or(element.isVisible);
    element.whiteSpace = style.whiteSpace.value_or(element.whiteSpace);
    element.hasListMarker = element.hasListMarker && style.hasListMarker;
    m_elements.push_back(element);
    if (element.isShown)
        begin(element, tag.attributes);
    // A self-closing tag doesn't close other elements, but these would hide everything that follows.
    if (isVoid(tag.name) || (tag.isSelfClosing && element.kind == HtmlElement::hidden))
        closeInnermost();
}

void HtmlReader::endTag(const QByteArray& name)
{
    if (name == "body" || name == "html")
        return; // what follows still belongs to it
    if (const auto flattened = m_flattened.find(name); flattened != m_flattened.end() && *flattened > 0) {
        --*flattened;
        return breakFlattened(htmlElement(name));
    }
    const bool crossesCells = isTablePart(name);
    const auto found =
        innermost([&](const Element& element) { return element.name == name; },
                  [&](const Element& element) {
                      return !crossesCells && (element.kind == HtmlElement::cell || element.name == "table");
                  });
    if (!found)
        return;
    const bool isOverlapped =
        m_elements[*found].kind == HtmlElement::inlineText &&
        std::any_of(m_elements.begin() + static_cast<std::ptrdiff_t>(*found) + 1, m_elements.end(),
                    [](const Element& element) { return element.kind != HtmlElement::inlineText; });
    if (isOverlapped)
        m_elements.erase(m_elements.begin() + static_cast<std::ptrdiff_t>(*found));
    else
        closeFrom(*found);
}

/// Keeps the break that an element makes, and forgets the element.
void HtmlReader::flatten(const HtmlToken& tag, HtmlElement kind)
{
    if (!isVoid(tag.name))
        ++m_flattened[tag.name];
    breakFlattened(kind);
}

void HtmlReader::breakFlattened(HtmlElement kind)
{
    if (!m_elements.back().isShown)
        return;
    if (kind == HtmlElement::lineBreak)
        m_flow.lineBreak();
    else if (isBlock(kind) || kind == HtmlElement::cell)
        m_flow.boundary();
}

void HtmlReader::text(QStringView text)
{
    const Element element = m_elements.empty() ? Element{} : m_elements.back();
    if (!element.isShown || !element.isVisible || text.isEmpty())
        return;
    if (std::exchange(m_isBeginOfPreformatted, false) && text.startsWith(u'\n'))
        text = text.sliced(1);
    m_flow.text(text, element.whiteSpace);
}

QString HtmlReader::take()
{
    closeFrom(0);
    return m_flow.take();
}

/// Closes those elements with an optional end tag that one of this name ends.
void HtmlReader::closeImplied(const QByteArray& name, HtmlElement kind)
{
    const auto closes = [&](auto wanted, auto border) {
        if (const auto found = innermost(wanted, border))
            closeFrom(*found);
    };
    const auto isTable = [](const Element& element) { return element.name == "table"; };
    if (name == "td" || name == "th") {
        closes([](const Element& element) { return element.name == "td" || element.name == "th"; },
               [&](const Element& element) { return element.name == "tr" || isTable(element); });
    } else if (name == "tr") {
        closes([](const Element& element) { return element.name == "tr"; }, isTable);
    } else if (name == "tbody" || name == "thead" || name == "tfoot") {
        for (int level = 0; level < 3; ++level) // a cell, its row, and their group
            closes(
                [](const Element& element) { return isTablePart(element.name) && element.name != "table"; },
                isTable);
    } else if (name == "li" || name == "option") {
        closes([&](const Element& element) { return element.name == name; },
               [&](const Element& element) {
                   return isList(element.kind) || element.kind == HtmlElement::cell || isTable(element);
               });
    } else if (name == "dt" || name == "dd") {
        closes([](const Element& element) { return element.name == "dt" || element.name == "dd"; },
               [&](const Element& element) {
                   return element.name == "dl" || element.kind == HtmlElement::cell || isTable(element);
               });
    }
    if (isBlock(kind)) {
        closes([](const Element& element) { return element.name == "p"; },
               [](const Element& element) { return element.kind != HtmlElement::inlineText; });
    }
}

/// Finds the innermost wanted element inside the border.
template <typename Wanted, typename Border>
std::optional<std::size_t> HtmlReader::innermost(Wanted wanted, Border border)
{
    for (std::size_t index = m_elements.size(); index-- > 0; ++m_cost) {
        if (wanted(m_elements[index]))
            return index;
        if (border(m_elements[index]))
            return std::nullopt;
    }
    return std::nullopt;
}

void HtmlReader::closeFrom(std::size_t index)
{
    while (m_elements.size() > index)
        closeInnermost();
}

void HtmlReader::closeInnermost()
{
    const Element element = m_elements.back();
    m_elements.pop_back();
    if (m_elements.size() < maximumDepth)
        m_flattened.clear(); // they were inside
    if (!element.isShown)
        return;
    m_isBeginOfPreformatted = false;
    if (isBlock(element.kind) && element.kind != HtmlElement::row)
        m_flow.boundary();
    if (element.kind == HtmlElement::listItem)
        m_flow.dropMarker();
    if (isList(element.kind))
        m_lists.pop_back();
    if (element.kind == HtmlElement::row) {
        m_flow.endRow();
        m_cellsOfRows.pop_back();
    }
}

HtmlElement HtmlReader::kind(const HtmlToken& tag, const HtmlStyle& style)
{
    const HtmlElement kind = htmlElement(tag.name);
    const bool isClosedDialog = tag.name == "dialog" && !tag.attributes.isOpen;
    if (kind == HtmlElement::hidden || style.display == HtmlStyle::Display::none || isClosedDialog)
        return HtmlElement::hidden;
    if (tag.attributes.isHidden && !style.display)
        return HtmlElement::hidden;
    if (kind == HtmlElement::inlineText && style.display == HtmlStyle::Display::block)
        return HtmlElement::block;
    if (kind == HtmlElement::block && style.display == HtmlStyle::Display::inlineText)
        return HtmlElement::inlineText;
    return kind;
}

void HtmlReader::begin(const Element& element, const HtmlAttributes& attributes)
{
    if (isBlock(element.kind))
        m_flow.boundary();
    m_isBeginOfPreformatted = element.kind == HtmlElement::preformatted;
    switch (element.kind) {
    case HtmlElement::lineBreak:
        m_flow.lineBreak();
        break;
    case HtmlElement::orderedList:
    case HtmlElement::list:
        m_lists.push_back({element.kind == HtmlElement::orderedList, number(attributes.start).value_or(1)});
        break;
    case HtmlElement::listItem:
        beginItem(element, attributes);
        break;
    case HtmlElement::row:
        m_flow.beginRow();
        m_cellsOfRows.push_back(0);
        break;
    case HtmlElement::cell:
        if (m_cellsOfRows.empty() || m_cellsOfRows.back()++ == 0)
            m_flow.boundary();
        else
            m_flow.nextCell();
        break;
    default:
        break;
    }
}

void HtmlReader::beginItem(const Element& element, const HtmlAttributes& attributes)
{
    const bool isOrdered = !m_lists.empty() && m_lists.back().isOrdered;
    QString mark = QStringLiteral("•");
    if (isOrdered) {
        int& next = m_lists.back().next;
        const int own = number(attributes.value).value_or(next);
        next = own < std::numeric_limits<int>::max() ? own + 1 : own;
        mark = QString::number(own) + u'.';
    }
    if (!element.hasListMarker)
        return m_flow.dropMarker();
    const auto indent = std::min(m_lists.empty() ? 0 : m_lists.size() - 1, maximumIndent);
    m_flow.setMarker(QString(static_cast<qsizetype>(indent), u'\t') + mark + u' ');
}

} // namespace orvane
