// Accessibility calls as small typed operations. Main thread; each may wait as long as its element's time-out
// allows. An attribute that can't be read, or holds a value of another kind, is absent; nothing is logged.
#pragma once

#include "Platform/Accessibility.h"

namespace orvane::AX {

/// Holds for each later call on this handle; set a short one before calls for which the user waits.
void setMessagingTimeout(const AXUIElement& element, std::chrono::duration<float> timeout);

std::optional<AXValue> copy(const AXUIElement& element, const QString& attribute);
std::optional<QString> string(const AXUIElement& element, const QString& attribute);
std::optional<bool> boolean(const AXUIElement& element, const QString& attribute);
std::optional<QUrl> url(const AXUIElement& element, const QString& attribute);
std::optional<AXUIElement> element(const AXUIElement& element, const QString& attribute);
std::optional<QList<AXUIElement>> elements(const AXUIElement& element, const QString& attribute);
std::optional<Point> point(const AXUIElement& element, const QString& attribute);
std::optional<Size> size(const AXUIElement& element, const QString& attribute);
/// Reads position and size; absent when either is.
std::optional<Rect> frame(const AXUIElement& element);

/// Doesn't report whether the value was taken.
void setBool(const AXUIElement& element, const QString& attribute, bool value);
/// Returns false when the element refuses.
bool set(const AXUIElement& element, const QString& attribute, Point point);
bool set(const AXUIElement& element, const QString& attribute, Size size);
bool perform(const AXUIElement& element, const QString& action);

} // namespace orvane::AX
