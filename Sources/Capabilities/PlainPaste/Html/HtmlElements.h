// What HTML elements, and the few properties of their style attributes that matter, do to the text.
#pragma once

#include <QByteArrayView>

#include <optional>

namespace orvane {

enum class HtmlElement {
    inlineText,
    block,
    lineBreak,
    hidden,
    preformatted,
    orderedList,
    list,
    listItem,
    row,
    cell,
};

/// `name` in lower case.
HtmlElement htmlElement(QByteArrayView name);

/// What becomes of spaces and line ends in the source.
enum class HtmlWhiteSpace { collapsed, kept, lineEndsKept };

struct HtmlStyle {
    enum class Display { none, block, inlineText };

    std::optional<Display> display = std::nullopt;
    std::optional<bool> isVisible = std::nullopt;
    std::optional<HtmlWhiteSpace> whiteSpace = std::nullopt;
    bool hasListMarker = true;
};

/// Reads a style attribute.
HtmlStyle htmlStyle(QByteArrayView declarations);

} // namespace orvane
