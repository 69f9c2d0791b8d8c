// The effects on the text of HTML elements and of those properties of style attributes that matter.
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

/// `name` is in lower case.
HtmlElement htmlElement(QByteArrayView name);

/// The treatment of spaces and line ends in the source.
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
