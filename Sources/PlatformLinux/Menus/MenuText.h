// Titles as the renderers of menus want them: one line of bounded length, their markup characters doubled.
#pragma once

#include <QString>

namespace orvane {

/// Without line breaks, control characters and halves of characters, at most 300 units long.
QString plainMenuTitle(const QString& title);

/// For com.canonical.dbusmenu, where an underscore announces a mnemonic.
QString dbusMenuLabel(const QString& title);

/// For QMenu, where an ampersand does.
QString widgetMenuText(const QString& title);

} // namespace orvane
