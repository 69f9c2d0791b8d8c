#include "KeyboardShortcuts/Registration/CarbonKeyboardShortcuts.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Registration/State.h"
#include "KeyboardShortcuts/Shortcut/ModifierFlags.h"
#include "Platform/Platform.h"

#include <algorithm>
#include <utility>

namespace orvane::KeyboardShortcuts {

namespace {

using CarbonKeyboardShortcuts::HotKey;
using Kind = KeyboardEvent::Kind;

CarbonKeyboardShortcuts::State& carbon()
{
    return state().carbon;
}

/// Keeps the four modifiers that a shortcut may have.
std::int64_t normalized(std::int64_t carbonModifiers)
{
    return toCarbonModifiers(toEventFlags(carbonModifiers));
}

HotKeys::Registration registerEventHotKey(const Shortcut& shortcut, std::uint32_t id)
{
    // A stored text may hold any number; one that the service can't take counts as refused by it.
    if (!std::in_range<std::uint32_t>(shortcut.carbonKeyCode) ||
        !std::in_range<std::uint32_t>(shortcut.carbonModifiers))
        return {eventHotKeyInvalidErr, nullptr};
    return platform().hotKeys.registerEventHotKey(static_cast<std::uint32_t>(shortcut.carbonKeyCode),
                                                  static_cast<std::uint32_t>(shortcut.carbonModifiers),
                                                  {CarbonKeyboardShortcuts::hotKeySignature, id});
}

/// `record` is the caller's, since a callback may end its own registration.
OSStatus call(std::shared_ptr<HotKey> record, Kind kind)
{
    const bool isDown = kind == Kind::hotKeyPressed || kind == Kind::rawKeyDown;
    (isDown ? record->onKeyDown : record->onKeyUp)(record->shortcut);
    return noErr;
}

OSStatus handleHotKeyEvent(const KeyboardEvent& event)
{
    if (!event.directObject)
        return eventParameterNotFoundErr;
    const auto found = carbon().hotKeys.find(event.directObject->id);
    if (event.directObject->signature != CarbonKeyboardShortcuts::hotKeySignature ||
        found == carbon().hotKeys.end())
        return eventNotHandledErr;
    return call(found->second, event.kind);
}

OSStatus handleRawKeyEvent(const KeyboardEvent& event)
{
    if (!event.keyCode || !event.keyModifiers)
        return eventParameterNotFoundErr;
    const Shortcut pressed(*event.keyCode, normalized(*event.keyModifiers));
    for (const auto& [id, record] : carbon().hotKeys) {
        if (record->shortcut == pressed)
            return call(record, event.kind);
    }
    return eventNotHandledErr;
}

EventMonitors::Disposition handleMenuKey(const EventMonitors::MonitoredEvent& monitored)
{
    const Event& event = monitored.event;
    if (!std::in_range<std::uint32_t>(event.keycode))
        return EventMonitors::Disposition::pass;
    KeyboardEvent raw;
    raw.kind = event.type == EventType::keyDown ? Kind::rawKeyDown : Kind::rawKeyUp;
    raw.keyCode = static_cast<std::uint32_t>(event.keycode);
    raw.keyModifiers = static_cast<std::uint32_t>(toCarbonModifiers(event.flags));
    return handleRawKeyEvent(raw) == noErr ? EventMonitors::Disposition::swallow
                                           : EventMonitors::Disposition::pass;
}

void startWatchingRawKeys()
{
    auto& monitor = carbon().keyEventMonitor;
    if (!monitor) {
        monitor = std::make_unique<RunLoopLocalEventMonitor>(
            eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp), handleMenuKey);
    }
    monitor->start();
}

void stopWatchingRawKeys()
{
    if (carbon().keyEventMonitor)
        carbon().keyEventMonitor->stop();
}

void suspendAll()
{
    for (const auto& [id, record] : carbon().hotKeys)
        record->carbonHotKey.reset();
}

/// Registers again what was suspended; combinations that another program took meanwhile are lost for good.
void softRegisterAll()
{
    std::erase_if(carbon().hotKeys, [](const auto& entry) {
        HotKey& record = *entry.second;
        if (!record.carbonHotKey)
            record.carbonHotKey = registerEventHotKey(record.shortcut, record.carbonHotKeyId).hotKey;
        return !record.carbonHotKey;
    });
}

std::optional<qint64> integer(const QVariant& value)
{
    if (value.typeId() != QMetaType::Int && value.typeId() != QMetaType::LongLong)
        return std::nullopt;
    return value.toLongLong();
}

std::optional<Shortcut> symbolicHotKey(const QVariantMap& entry)
{
    const QVariant enabled = entry.value(QStringLiteral("kHISymbolicHotKeyEnabled"));
    const auto code = integer(entry.value(QStringLiteral("kHISymbolicHotKeyCode")));
    const auto modifiers = integer(entry.value(QStringLiteral("kHISymbolicHotKeyModifiers")));
    if (enabled.typeId() != QMetaType::Bool || !enabled.toBool() || !code || !modifiers)
        return std::nullopt;
    return Shortcut(*code, normalized(*modifiers));
}

} // namespace

OSStatus CarbonKeyboardShortcuts::carbonKeyboardShortcutsEventHandler(const KeyboardEvent* event)
{
    if (!event)
        return eventNotHandledErr;
    switch (event->kind) {
    case Kind::hotKeyPressed:
    case Kind::hotKeyReleased:
        return handleHotKeyEvent(*event);
    case Kind::rawKeyDown:
    case Kind::rawKeyUp:
        return handleRawKeyEvent(*event);
    }
    return eventNotHandledErr;
}

OSStatus CarbonKeyboardShortcuts::registerShortcut(const Shortcut& shortcut, Callback onKeyDown,
                                                   Callback onKeyUp)
{
    const std::uint32_t id = ++carbon().hotKeyId;
    auto registration = registerEventHotKey(shortcut, id);
    if (registration.status != noErr || !registration.hotKey)
        return registration.status != noErr ? registration.status : eventHotKeyInvalidErr;
    HotKey record{shortcut, id, std::move(registration.hotKey), std::move(onKeyDown), std::move(onKeyUp)};
    carbon().hotKeys.emplace(id, std::make_shared<HotKey>(std::move(record)));
    if (carbon().eventHandler)
        return noErr;
    carbon().eventHandler = platform().hotKeys.installEventHandler(carbonKeyboardShortcutsEventHandler);
    updateEventHandler();
    return noErr;
}

void CarbonKeyboardShortcuts::unregisterShortcut(const Shortcut& shortcut)
{
    std::erase_if(carbon().hotKeys, [&](const auto& entry) { return entry.second->shortcut == shortcut; });
}

void CarbonKeyboardShortcuts::updateEventHandler()
{
    EventHandler* handler = carbon().eventHandler.get();
    if (!handler)
        return;
    if (isEnabled() && !isMenuOpen()) {
        softRegisterAll();
        stopWatchingRawKeys();
        handler->addEventTypes({Kind::hotKeyPressed, Kind::hotKeyReleased});
        return;
    }
    suspendAll();
    handler->removeEventTypes({Kind::hotKeyPressed, Kind::hotKeyReleased});
    if (isEnabled())
        startWatchingRawKeys();
    else
        stopWatchingRawKeys();
}

QList<Shortcut> CarbonKeyboardShortcuts::system()
{
    const auto [status, array] = platform().hotKeys.copySymbolicHotKeys();
    if (status != noErr || array.typeId() != QMetaType::QVariantList)
        return {};
    QList<Shortcut> shortcuts;
    for (const QVariant& entry : array.toList()) {
        if (entry.typeId() != QMetaType::QVariantMap)
            return {};
        if (const auto shortcut = symbolicHotKey(entry.toMap()))
            shortcuts.append(*shortcut);
    }
    return shortcuts;
}

} // namespace orvane::KeyboardShortcuts
