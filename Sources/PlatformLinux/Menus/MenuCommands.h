// The commands of the main menu that go to the object with the focus: editing to the focused widget or the
// nearest one around it that takes them, closing and minimizing to the active window. Main thread.
#pragma once

#include <QStringView>

namespace orvane::menuCommands {

/// True if something would take the command at this moment.
bool isTaken(QStringView selector);

/// Returns false when nothing takes it.
bool send(QStringView selector);

} // namespace orvane::menuCommands
