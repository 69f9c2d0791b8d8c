// The commands of the main menu that go to whatever has the focus: editing to the focused widget or the first
// one around it that takes them, closing and minimizing to the active window. Main thread.
#pragma once

#include <QStringView>

namespace orvane::menuCommands {

/// Whether something would take the command at this moment.
bool isTaken(QStringView selector);

/// False when nothing takes it.
bool send(QStringView selector);

} // namespace orvane::menuCommands
