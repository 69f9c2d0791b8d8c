#include "OrvaneCore/Windows/AX.h"

#include "OrvaneCore/Windows/AXAttr.h"
#include "Platform/Platform.h"

namespace orvane::AX {

namespace {

Accessibility& accessibility()
{
    return platform().accessibility;
}

template <typename Kind>
std::optional<Kind> valueOfKind(const AXUIElement& element, const QString& attribute)
{
    const std::optional<AXValue> value = copy(element, attribute);
    const Kind* held = value ? std::get_if<Kind>(&*value) : nullptr;
    return held ? std::optional(*held) : std::nullopt;
}

template <typename Kind>
bool setValue(const AXUIElement& element, const QString& attribute, const Kind& value)
{
    return accessibility().setAttributeValue(element, attribute, value) == AXError::success;
}

} // namespace

void setMessagingTimeout(const AXUIElement& element, std::chrono::duration<float> timeout)
{
    accessibility().setMessagingTimeout(element, timeout);
}

std::optional<AXValue> copy(const AXUIElement& element, const QString& attribute)
{
    Accessibility::Copied copied = accessibility().copyAttributeValue(element, attribute);
    return copied.error == AXError::success ? std::move(copied.value) : std::nullopt;
}

std::optional<QString> string(const AXUIElement& element, const QString& attribute)
{
    return valueOfKind<QString>(element, attribute);
}

std::optional<bool> boolean(const AXUIElement& element, const QString& attribute)
{
    return valueOfKind<bool>(element, attribute);
}

std::optional<QUrl> url(const AXUIElement& element, const QString& attribute)
{
    return valueOfKind<QUrl>(element, attribute);
}

std::optional<AXUIElement> element(const AXUIElement& element, const QString& attribute)
{
    return valueOfKind<AXUIElement>(element, attribute);
}

std::optional<QList<AXUIElement>> elements(const AXUIElement& element, const QString& attribute)
{
    return valueOfKind<QList<AXUIElement>>(element, attribute);
}

std::optional<Point> point(const AXUIElement& element, const QString& attribute)
{
    return valueOfKind<Point>(element, attribute);
}

std::optional<Size> size(const AXUIElement& element, const QString& attribute)
{
    return valueOfKind<Size>(element, attribute);
}

std::optional<Rect> frame(const AXUIElement& element)
{
    const std::optional<Point> origin = point(element, AXAttr::position);
    const std::optional<Size> extent = size(element, AXAttr::size);
    if (!origin || !extent)
        return std::nullopt;
    return Rect{*origin, *extent};
}

void setBool(const AXUIElement& element, const QString& attribute, bool value)
{
    accessibility().setAttributeValue(element, attribute, value);
}

bool set(const AXUIElement& element, const QString& attribute, Point point)
{
    return setValue(element, attribute, point);
}

bool set(const AXUIElement& element, const QString& attribute, Size size)
{
    return setValue(element, attribute, size);
}

bool perform(const AXUIElement& element, const QString& action)
{
    return accessibility().performAction(element, action) == AXError::success;
}

} // namespace orvane::AX
