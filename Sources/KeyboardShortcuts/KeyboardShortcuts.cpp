#include "KeyboardShortcuts/KeyboardShortcuts.h"

#include "KeyboardShortcuts/Registration/CarbonKeyboardShortcuts.h"
#include "KeyboardShortcuts/Registration/State.h"
#include "KeyboardShortcuts/Storage/ShortcutStorage.h"
#include "Platform/Menu.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"

#include <algorithm>
#include <chrono>

namespace orvane::KeyboardShortcuts {

namespace {

State* presentState = nullptr;

QStringList namesWith(const Shortcut& shortcut, const Name& except)
{
    QStringList names = state().legacyKeyDownHandlers.namesWith(shortcut);
    names += state().legacyKeyUpHandlers.namesWith(shortcut);
    names.removeDuplicates();
    names.removeAll(except.rawValue());
    return names;
}

void handleOnKeyDown(const Shortcut& shortcut)
{
    if (!state().isPaused) {
        state().pressedWhilePaused.erase(shortcut);
        state().legacyKeyDownHandlers.fire(shortcut);
        return;
    }
    state().pressedWhilePaused.insert(shortcut);
    const auto pausedHotKey = state().pausedHotKey; // it may end itself
    if (pausedHotKey)
        pausedHotKey(Shortcut(shortcut));
}

void handleOnKeyUp(const Shortcut& shortcut)
{
    const bool wasPaused = state().pressedWhilePaused.erase(shortcut) > 0;
    if (!state().isPaused && !wasPaused)
        state().legacyKeyUpHandlers.fire(shortcut);
}

constexpr std::chrono::seconds retryInterval{10};

void postRefusals()
{
    platform().defaultNotificationCenter.post(refusalsDidChangeNotification());
}

void noteRefusal(const Shortcut& shortcut, OSStatus status)
{
    state().refused.insert_or_assign(shortcut, status);
    if (status == eventHotKeyExistsErr && !state().retry) {
        state().retry =
            platform().mainRunLoop.scheduleTimer(retryInterval, RunLoop::Repeats::yes, &retryRefused);
    }
    postRefusals();
}

/// Nothing but the other program's end of a shortcut is worth asking again.
bool isAnyTaken()
{
    return std::ranges::any_of(state().refused,
                               [](const auto& entry) { return entry.second == eventHotKeyExistsErr; });
}

void forgetRefusal(const Shortcut& shortcut)
{
    if (state().refused.erase(shortcut) == 0)
        return;
    if (!isAnyTaken())
        state().retry.reset();
    postRefusals();
}

OSStatus registerWithSystem(const Shortcut& shortcut)
{
    return CarbonKeyboardShortcuts::registerShortcut(shortcut, handleOnKeyDown, handleOnKeyUp);
}

bool isReleased(const QString& name)
{
    return state().released.contains(name);
}

/// The system is asked once, however many names hold the shortcut.
void registerFor(const Name& name, const Shortcut& shortcut)
{
    if (isReleased(name.rawValue()) || state().registeredShortcuts.contains(shortcut))
        return;
    state().registeredShortcuts.insert(shortcut);
    if (const OSStatus status = registerWithSystem(shortcut); status != noErr)
        noteRefusal(shortcut, status);
}

void unregister(const Shortcut& shortcut)
{
    CarbonKeyboardShortcuts::unregisterShortcut(shortcut);
    state().registeredShortcuts.erase(shortcut);
    forgetRefusal(shortcut);
}

/// Ends the registration for a name, unless another one still needs it.
void unregisterFor(const Name& name, const Shortcut& shortcut)
{
    const QStringList others = namesWith(shortcut, name);
    if (std::ranges::all_of(others, &isReleased))
        unregister(shortcut);
}

QString nameKey()
{
    return QStringLiteral("name");
}

void postChange(const Name& name)
{
    platform().defaultNotificationCenter.post(shortcutByNameDidChangeNotification(),
                                              {{nameKey(), QVariant::fromValue(name)}});
}

void clear(const Name& name)
{
    const auto current = getShortcut(name);
    if (!current)
        return;
    if (name.defaultShortcut())
        storage::writeCleared(storage::key(name));
    else
        storage::remove(storage::key(name));
    unregister(*current);
    postChange(name);
}

void addHandler(HandlerTable& handlers, const Name& name, Action action)
{
    handlers.append(name, std::move(action));
    enable({name});
}

void setMenuOpen(bool isOpen)
{
    if (state().isMenuOpen == isOpen)
        return;
    state().isMenuOpen = isOpen;
    CarbonKeyboardShortcuts::updateEventHandler();
}

} // namespace

State& state()
{
    if (!presentState)
        presentState = new State;
    return *presentState;
}

StateScope::StateScope()
    : m_state(std::make_unique<State>()), m_previous(std::exchange(presentState, m_state.get()))
{
}

StateScope::~StateScope()
{
    presentState = m_previous;
}

void initialize()
{
    if (std::exchange(state().isInitialized, true))
        return;
    NotificationCenter& center = platform().defaultNotificationCenter;
    state().openMenuObserver = center.addObserver(Menu::didBeginTrackingNotification(),
                                                  [](const Notification&) { setMenuOpen(true); });
    state().closeMenuObserver = center.addObserver(Menu::didEndTrackingNotification(),
                                                   [](const Notification&) { setMenuOpen(false); });
}

std::optional<Shortcut> getShortcut(const Name& name)
{
    return storage::read(storage::key(name));
}

void setShortcut(const std::optional<Shortcut>& shortcut, const Name& name)
{
    if (shortcut)
        userDefaultsSet(name, *shortcut);
    else
        clear(name);
}

// The new shortcut works before the store announces it, and the old one is removed first even if the two are
// equal.
void userDefaultsSet(const Name& name, const Shortcut& shortcut)
{
    if (const auto former = getShortcut(name))
        unregister(*former);
    registerFor(name, shortcut);
    storage::write(storage::key(name), shortcut);
    postChange(name);
}

void reset(const QList<Name>& names)
{
    for (const Name& name : names)
        setShortcut(name.defaultShortcut(), name);
}

void onKeyDown(const Name& name, Action action)
{
    addHandler(state().legacyKeyDownHandlers, name, std::move(action));
}

void onKeyUp(const Name& name, Action action)
{
    addHandler(state().legacyKeyUpHandlers, name, std::move(action));
}

void enable(const QList<Name>& names)
{
    for (const Name& name : names) {
        if (const auto shortcut = getShortcut(name))
            registerFor(name, *shortcut);
    }
}

void disable(const QList<Name>& names)
{
    for (const Name& name : names) {
        if (const auto shortcut = getShortcut(name))
            unregister(*shortcut);
    }
}

void release(const Name& name)
{
    if (isReleased(name.rawValue()))
        return;
    state().released.insert(name.rawValue());
    if (const auto shortcut = getShortcut(name))
        unregisterFor(name, *shortcut);
}

void claim(const Name& name)
{
    if (state().released.remove(name.rawValue()))
        enable({name});
}

std::optional<std::int32_t> refusal(const Name& name)
{
    const auto shortcut = getShortcut(name);
    if (!shortcut || isReleased(name.rawValue()))
        return std::nullopt;
    const auto found = state().refused.find(*shortcut);
    return found != state().refused.end() ? std::optional(found->second) : std::nullopt;
}

/// While all registrations are suspended, a new one would act at the wrong time.
void retryRefused()
{
    if (!state().isEnabled || state().isMenuOpen)
        return;
    const auto refused = state().refused;
    for (const auto& [shortcut, status] : refused) {
        if (status == eventHotKeyExistsErr && registerWithSystem(shortcut) == noErr)
            forgetRefusal(shortcut);
    }
}

QStringList namesSharingShortcut(const Name& name)
{
    const auto shortcut = getShortcut(name);
    return shortcut ? namesWith(*shortcut, name) : QStringList();
}

bool isEnabled()
{
    return state().isEnabled;
}

void setEnabled(bool enabled)
{
    if (state().isEnabled == enabled)
        return;
    state().isEnabled = enabled;
    CarbonKeyboardShortcuts::updateEventHandler();
}

bool isPaused()
{
    return state().isPaused;
}

void setPaused(bool paused)
{
    state().isPaused = paused;
}

bool isMenuOpen()
{
    return state().isMenuOpen;
}

std::optional<Name> changedName(const Notification& notification)
{
    // QVariant's own conversion needs a Name that can be made without arguments.
    const QVariant value = notification.userInfo.value(nameKey());
    if (value.metaType() != QMetaType::fromType<Name>())
        return std::nullopt;
    return *static_cast<const Name*>(value.constData());
}

} // namespace orvane::KeyboardShortcuts
