// Names of accessibility attributes, actions, roles and notifications.
#pragma once

#include <QString>

namespace orvane::AXAttr {

inline const QString children = QStringLiteral("AXChildren");
inline const QString role = QStringLiteral("AXRole");
inline const QString listRole = QStringLiteral("AXList");
inline const QString windowRole = QStringLiteral("AXWindow");
inline const QString selectedChildren = QStringLiteral("AXSelectedChildren");
inline const QString selectedChildrenChanged = QStringLiteral("AXSelectedChildrenChanged");
inline const QString url = QStringLiteral("AXURL");
inline const QString title = QStringLiteral("AXTitle");
inline const QString position = QStringLiteral("AXPosition");
inline const QString size = QStringLiteral("AXSize");
inline const QString windows = QStringLiteral("AXWindows");
inline const QString minimized = QStringLiteral("AXMinimized");
inline const QString raiseAction = QStringLiteral("AXRaise");
inline const QString main = QStringLiteral("AXMain");
inline const QString focused = QStringLiteral("AXFocused");
inline const QString focusedWindow = QStringLiteral("AXFocusedWindow");
inline const QString focusedApplication = QStringLiteral("AXFocusedApplication");
inline const QString fullScreen = QStringLiteral("AXFullScreen");
inline const QString parent = QStringLiteral("AXParent");
inline const QString closeButton = QStringLiteral("AXCloseButton");
inline const QString zoomButton = QStringLiteral("AXZoomButton");
inline const QString pressAction = QStringLiteral("AXPress");

} // namespace orvane::AXAttr
