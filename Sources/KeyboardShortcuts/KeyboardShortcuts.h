// Calls actions when the user presses the shortcut of a name, whichever shortcut that is at the time.
//
// One namespace with static state, on the main thread. A shortcut that the system refuses doesn't fire: its
// name tells of the refusal. A stored value that can't be read counts as absent.
#pragma once

#include "KeyboardShortcuts/Shortcut/Name.h"
#include "KeyboardShortcuts/Shortcut/Shortcut.h"

#include <QList>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace orvane {
struct Notification;
}

namespace orvane::KeyboardShortcuts {

using Action = std::function<void()>;

std::optional<Shortcut> getShortcut(const Name& name);
/// An absent shortcut clears the name; a name with a default remembers that it was cleared.
void setShortcut(const std::optional<Shortcut>& shortcut, const Name& name);
/// Registers the shortcut, stores it under the name and announces the change. The recorder uses this one.
void userDefaultsSet(const Name& name, const Shortcut& shortcut);
/// Restores the defaults; a name without one is cleared.
void reset(const QList<Name>& names);

/// Adds `action` to those that the name has; none is ever replaced. An action may set shortcuts and add
/// actions: one that is added while others run waits for the next press.
void onKeyDown(const Name& name, Action action);
void onKeyUp(const Name& name, Action action);

/// Actions and stored values stay as they are.
void enable(const QList<Name>& names);
void disable(const QList<Name>& names);

/// Leaves the shortcut of a name to other programs, also one that is set meanwhile, until the name is
/// claimed.
void release(const Name& name);
void claim(const Name& name);

/// Returns the system's answer if it has refused the shortcut of a claimed name. While another program has
/// it, the system is asked again from time to time.
[[nodiscard]] std::optional<std::int32_t> refusal(const Name& name);
/// Asks again now for all that were refused.
void retryRefused();
/// Posted on the default notification centre when the answer of `refusal` may have changed for some name.
inline QString refusalsDidChangeNotification()
{
    return QStringLiteral("KeyboardShortcuts_refusalsDidChange");
}
/// Returns the raw values of other names with actions that have the shortcut of this one.
[[nodiscard]] QStringList namesSharingShortcut(const Name& name);

/// True if shortcuts fire at all.
bool isEnabled();
void setEnabled(bool enabled);
/// True while a recorder records: shortcuts are still taken from other programs, but call no action.
bool isPaused();
void setPaused(bool paused);
/// True while a menu of the program is open.
bool isMenuOpen();

/// Posted on the default notification centre after each stored change of a name.
inline QString shortcutByNameDidChangeNotification()
{
    return QStringLiteral("KeyboardShortcuts_shortcutByNameDidChange");
}
/// Returns the name that such a notification is about: its user info's "name", a `Name`.
std::optional<Name> changedName(const Notification& notification);

struct State;

/// Fresh state for a scope, for tests: at its end every hot key is released, and the former state is
/// restored. It must end before the platform that it uses.
class StateScope {
public:
    StateScope();
    ~StateScope();
    StateScope(const StateScope&) = delete;
    StateScope& operator=(const StateScope&) = delete;

private:
    std::unique_ptr<State> m_state;
    State* m_previous;
};

} // namespace orvane::KeyboardShortcuts
