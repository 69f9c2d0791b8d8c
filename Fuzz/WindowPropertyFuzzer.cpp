// Whatever windows carry, sizes and places that are computed from it stay within what the server can do, and
// the visible part of a display stays inside of it.
#include "PlatformLinux/Accessibility/WindowProperties.h"
#include "PlatformLinux/Applications/ApplicationIdentity.h"
#include "PlatformLinux/Screens/Struts.h"
#include "PlatformLinux/X11/PropertyNumbers.h"
#include "PlatformLinux/X11/WindowTexts.h"
#include "Require.h"
#include "Script.h"

using namespace orvane;
using orvane::fuzz::require;
using orvane::fuzz::Script;

namespace {

constexpr int greatestSize = 0x7FFF; // sizes of the server have 16 bits

int coordinate(Script& script)
{
    return script.number<std::int16_t>();
}

PropertyNumbers numbers(Script& script)
{
    const QByteArray bytes = script.bytes(script.number<std::uint8_t>());
    return propertyNumbers(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

PixelEdges edges(Script& script)
{
    const int left = coordinate(script);
    const int top = coordinate(script);
    return {left, top, left + script.number<std::uint16_t>(), top + script.number<std::uint16_t>()};
}

void checkSizes(const SizeHints& hints, Script& script)
{
    const SizeHints::PixelSize asked{script.number<std::uint16_t>(), script.number<std::uint16_t>()};
    const auto given = hints.nearest(asked);
    require(given.width >= 1 && given.width <= 2 * greatestSize);
    require(given.height >= 1 && given.height <= 2 * greatestSize);
    require(hints.nearest(given) == given);
}

void checkPlace(const SizeHints& hints, Script& script)
{
    WindowPlace place;
    place.client = edges(script);
    place.outer = edges(script);
    place.decoration = frameExtents(numbers(script));
    place.invisible = frameExtents(numbers(script)).value_or(PixelMargins());
    place.isRolledUp = managedState(numbers(script)) == ManagedState::iconic;
    const PixelEdges frame = visibleFrame(place);
    require(shrunk(frame, visibleMargins(place)) == place.client);
    require(rounded(frame.rect()) == frame);
    const PixelPoint origin = requestedOrigin(frame, visibleMargins(place), hints.gravity());
    if (hints.gravity() == Gravity::northWest)
        require(origin == PixelPoint{frame.left, frame.top});
}

void checkStruts(Script& script)
{
    const Rect display{
        {double(coordinate(script)), double(coordinate(script))},
        {double(1 + script.number<std::uint16_t>()), double(1 + script.number<std::uint16_t>())}};
    const Size root{double(1 + script.number<std::uint16_t>()), double(1 + script.number<std::uint16_t>())};
    std::vector<Strut> struts;
    for (int count = script.number<std::uint8_t>() % 4; count >= 0; --count) {
        const PropertyNumbers partial = numbers(script);
        if (const auto strut = strutOf(partial, numbers(script)))
            struts.push_back(*strut);
    }
    const Rect visible = visiblePart(display, root, struts);
    require(visible.size.width > 0 && visible.size.height > 0);
    require(visible.minX() >= display.minX() && visible.maxX() <= display.maxX());
    require(visible.minY() >= display.minY() && visible.maxY() <= display.maxY());
}

void checkTexts(const QByteArray& bytes)
{
    const std::string text = bytes.toStdString();
    const WindowClass windowClass = windowClassOf(text);
    require(windowClass.instance.size() + windowClass.name.size() <= bytes.size());
    require(windowTitleOf(text, text).size() <= bytes.size());
    const QString id = desktopEntryIDOf(text);
    require(!id.contains(u'/'));
    const auto identifier = bundleIdentifier({windowClass.name, windowClass.instance, id});
    require(!identifier || !identifier->isEmpty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Script script(data, size);
    const SizeHints hints(numbers(script));
    checkSizes(hints, script);
    checkPlace(hints, script);
    checkStruts(script);
    (void)motifFunctions(numbers(script));
    checkTexts(script.rest());
    return 0;
}
