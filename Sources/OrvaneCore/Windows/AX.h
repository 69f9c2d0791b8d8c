// Accessibility calls as small typed operations. Main thread; each may wait as long as its element's time-out
// says. An attribute that can't be read, or holds a value of another kind, is absent; nothing is logged.
#pragma once

#include "Platform/Accessibility.h"

namespace orvane::AX {

/// For each later call on this handle; set a short one before calls that somebody waits for.
void setMessagingTimeout(const AXUIElement& element, std::chrono::duration<float> timeout);

std::optional<AXValue> copy(const AXUIElement& element, const QString& attribute);
std::optional<QString> string(const AXUIElement& element, const QString& attribute);
std::optional<bool> boolean(const AXUIElement& element, const QString& attribute);
std::optional<QUrl> url(const AXUIElement& element, const QString& attribute);
std::optional<AXUIElement> element(const AXUIElement& element, const QString& attribute);
std::optional<QList<AXUIElement>> elements(const AXUIElement& element, const QString& attribute);
std::optional<Point> point(const AXUIElement& element, const QString& attribute);
std::optional<Size> size(const AXUIElement& element, const QString& attribute);
/// Of position and size; absent when either is.
std::optional<Rect> frame(const AXUIElement& element);

/// Whether it was taken is not told.
void setBool(const AXUIElement& element, const QString& attribute, bool value);
/// False when the element refuses.
bool set(const AXUIElement& element, const QString& attribute, Point point);
bool set(const AXUIElement& element, const QString& attribute, Size size);
bool perform(const AXUIElement& element, const QString& action);

} // namespace orvane::AX
