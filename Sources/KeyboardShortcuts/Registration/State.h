// All static state of this library in one place: what the shortcuts are and what the system was asked for.
// Main thread.
#pragma once

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Registration/CarbonKeyboardShortcuts.h"
#include "KeyboardShortcuts/Registration/HandlerTable.h"
#include "KeyboardShortcuts/Registration/RunLoopLocalEventMonitor.h"
#include "Platform/HotKeys.h"
#include "Platform/NotificationCenter.h"
#include "Platform/RunLoop.h"

#include <QSet>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <unordered_map>
#include <unordered_set>

namespace orvane::KeyboardShortcuts {

namespace CarbonKeyboardShortcuts {

/// One registration.
struct HotKey {
    Shortcut shortcut;
    std::uint32_t carbonHotKeyId;
    std::unique_ptr<EventHotKey> carbonHotKey; // null while suspended
    Callback onKeyDown;
    Callback onKeyUp;
};

struct State {
    std::map<std::uint32_t, std::shared_ptr<HotKey>> hotKeys;
    /// The last id that was used.
    std::uint32_t hotKeyId = 0;
    /// Null until the first registration that succeeds.
    std::unique_ptr<EventHandler> eventHandler;
    /// Null until raw keys are first watched.
    std::unique_ptr<RunLoopLocalEventMonitor> keyEventMonitor;
};

/// Handles the events of all hot keys.
OSStatus carbonKeyboardShortcutsEventHandler(const KeyboardEvent* event);

} // namespace CarbonKeyboardShortcuts

struct State {
    bool isEnabled = true;
    bool isPaused = false;
    bool isMenuOpen = false;
    /// Gets the hot keys that are pressed while a recorder has paused them: the system reports those to
    /// nobody else. Null without a recorder.
    std::function<void(const Shortcut&)> pausedHotKey;
    /// The hot keys that were pressed while paused: their release does nothing.
    std::unordered_set<Shortcut> pressedWhilePaused;
    /// The shortcuts that the system was asked for, with success or without.
    std::unordered_set<Shortcut> registeredShortcuts;
    /// Names whose shortcuts are left to other programs for now.
    QSet<QString> released;
    /// The shortcuts that the system has refused, with its answers.
    std::unordered_map<Shortcut, OSStatus> refused;
    /// Runs while some are refused.
    std::unique_ptr<Timer> retry;
    HandlerTable legacyKeyDownHandlers;
    HandlerTable legacyKeyUpHandlers;

    bool isInitialized = false;
    std::unique_ptr<NotificationCenter::Token> openMenuObserver;
    std::unique_ptr<NotificationCenter::Token> closeMenuObserver;

    CarbonKeyboardShortcuts::State carbon;
};

/// Returns the present state. The process's own is never destroyed: it would outlive the platform.
State& state();

/// Watches the menus from the first call on.
void initialize();

} // namespace orvane::KeyboardShortcuts
