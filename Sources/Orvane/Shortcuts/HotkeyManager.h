// Binds actions to global shortcuts, with a gate: whether the owner may act is asked when the shortcut fires
// and not when it is bound. Main thread.
#pragma once

#include <QString>

#include <functional>

namespace orvane {

class HotkeyManager {
public:
    using IsActive = std::function<bool()>;
    using Handler = std::function<void()>;

    /// The binding is permanent: a shortcut that the user stores under `id` later fires too. The action runs
    /// when the keys are released.
    void registerHotkey(const QString& id, IsActive isActive, Handler handler);
    /// Binds without a gate.
    void registerAppLevel(const QString& id, Handler handler);
};

} // namespace orvane
