// The reason why a stored shortcut doesn't do what its chip says. Main thread.
#pragma once

#include <QString>

#include <functional>

namespace orvane {

/// Returns the title of an action by its id; empty for an unknown one.
using ActionTitle = std::function<QString(const QString& id)>;

/// A sentence for a person: the session has no shortcuts, the system has refused this one, or another action
/// has it too. Empty where nothing is wrong or no shortcut is set.
[[nodiscard]] QString shortcutNote(const QString& actionID, const ActionTitle& titleOf);

} // namespace orvane
