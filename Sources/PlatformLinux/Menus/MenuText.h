// Titles as the renderers of menus want them: one line of bounded length, with markup characters doubled.
#pragma once

#include <QString>

namespace orvane {

/// Removes line breaks, control characters and halves of characters; at most 300 units are left.
QString plainMenuTitle(const QString& title);

/// For com.canonical.dbusmenu, where an underscore announces a mnemonic.
QString dbusMenuLabel(const QString& title);

/// For QMenu, where an ampersand announces a mnemonic.
QString widgetMenuText(const QString& title);

} // namespace orvane
