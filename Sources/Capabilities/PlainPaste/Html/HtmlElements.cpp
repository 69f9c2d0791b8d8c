#include "Capabilities/PlainPaste/Html/HtmlElements.h"

#include <QByteArray>

#include <algorithm>
#include <array>
#include <string_view>

namespace orvane {

namespace {

struct Entry {
    std::string_view name;
    HtmlElement element;
};

using enum HtmlElement;

/// Sorted by their bytes.
constexpr std::array entries{
    Entry{"address", block},
    Entry{"applet", hidden},
    Entry{"article", block},
    Entry{"aside", block},
    Entry{"audio", hidden},
    Entry{"base", hidden},
    Entry{"blockquote", block},
    Entry{"body", block},
    Entry{"br", lineBreak},
    Entry{"canvas", hidden},
    Entry{"caption", block},
    Entry{"center", block},
    Entry{"datalist", hidden},
    Entry{"dd", block},
    Entry{"details", block},
    Entry{"dialog", block},
    Entry{"dir", list},
    Entry{"div", block},
    Entry{"dl", block},
    Entry{"dt", block},
    Entry{"embed", hidden},
    Entry{"fieldset", block},
    Entry{"figcaption", block},
    Entry{"figure", block},
    Entry{"footer", block},
    Entry{"form", block},
    Entry{"h1", block},
    Entry{"h2", block},
    Entry{"h3", block},
    Entry{"h4", block},
    Entry{"h5", block},
    Entry{"h6", block},
    Entry{"header", block},
    Entry{"hgroup", block},
    Entry{"hr", block},
    Entry{"html", block},
    Entry{"iframe", hidden},
    Entry{"legend", block},
    Entry{"li", listItem},
    Entry{"link", hidden},
    Entry{"listing", preformatted},
    Entry{"main", block},
    Entry{"menu", list},
    Entry{"meta", hidden},
    Entry{"nav", block},
    Entry{"noembed", hidden},
    Entry{"noframes", hidden},
    Entry{"noscript", hidden},
    Entry{"object", hidden},
    Entry{"ol", orderedList},
    Entry{"optgroup", block},
    Entry{"option", block},
    Entry{"p", block},
    Entry{"plaintext", preformatted},
    Entry{"pre", preformatted},
    Entry{"rp", hidden},
    Entry{"script", hidden},
    Entry{"search", block},
    Entry{"section", block},
    Entry{"style", hidden},
    Entry{"summary", block},
    Entry{"svg", hidden},
    Entry{"table", block},
    Entry{"tbody", block},
    Entry{"td", cell},
    Entry{"template", hidden},
    Entry{"textarea", preformatted},
    Entry{"tfoot", block},
    Entry{"th", cell},
    Entry{"thead", block},
    Entry{"title", hidden},
    Entry{"tr", row},
    Entry{"ul", list},
    Entry{"video", hidden},
    Entry{"xml", hidden},
    Entry{"xmp", preformatted},
};
static_assert(std::ranges::is_sorted(entries, {}, &Entry::name));

std::optional<HtmlWhiteSpace> whiteSpace(QByteArrayView value)
{
    if (value == QByteArrayView("pre") || value == QByteArrayView("pre-wrap") ||
        value == QByteArrayView("break-spaces"))
        return HtmlWhiteSpace::kept;
    if (value == QByteArrayView("pre-line"))
        return HtmlWhiteSpace::lineEndsKept;
    if (value == QByteArrayView("normal") || value == QByteArrayView("nowrap"))
        return HtmlWhiteSpace::collapsed;
    return std::nullopt;
}

std::optional<HtmlStyle::Display> display(QByteArrayView value)
{
    if (value == QByteArrayView("none"))
        return HtmlStyle::Display::none;
    if (value.startsWith("inline") || value == QByteArrayView("contents"))
        return HtmlStyle::Display::inlineText;
    if (value == QByteArrayView("block") || value == QByteArrayView("flex") ||
        value == QByteArrayView("grid") || value == QByteArrayView("flow-root"))
        return HtmlStyle::Display::block;
    return std::nullopt;
}

void declare(HtmlStyle& style, QByteArrayView property, QByteArrayView value)
{
    if (property == QByteArrayView("display"))
        style.display = display(value);
    else if (property == QByteArrayView("mso-hide") && value == QByteArrayView("all"))
        style.display = HtmlStyle::Display::none;
    else if (property == QByteArrayView("visibility"))
        style.isVisible = value == QByteArrayView("visible");
    else if (property == QByteArrayView("white-space"))
        style.whiteSpace = whiteSpace(value);
    else if (property == QByteArrayView("list-style-type") || property == QByteArrayView("list-style"))
        style.hasListMarker = !value.startsWith("none");
}

} // namespace

HtmlElement htmlElement(QByteArrayView name)
{
    const std::string_view wanted(name.data(), static_cast<std::size_t>(name.size()));
    const auto found = std::ranges::lower_bound(entries, wanted, {}, &Entry::name);
    return found != entries.end() && found->name == wanted ? found->element : inlineText;
}

HtmlStyle htmlStyle(QByteArrayView declarations)
{
    HtmlStyle style;
    const QByteArray lower = declarations.toByteArray().toLower();
    QByteArrayView rest(lower);
    while (!rest.isEmpty()) {
        const qsizetype end = std::ranges::find(rest, ';') - rest.begin();
        const QByteArrayView declaration = rest.first(end);
        const qsizetype colon = std::ranges::find(declaration, ':') - declaration.begin();
        if (colon < declaration.size()) {
            QByteArrayView value = declaration.sliced(colon + 1).trimmed();
            constexpr QByteArrayView important("!important");
            if (value.endsWith(important))
                value = value.chopped(important.size()).trimmed();
            declare(style, declaration.first(colon).trimmed(), value);
        }
        rest = rest.sliced(std::min(end + 1, rest.size()));
    }
    return style;
}

} // namespace orvane
