#include "Fakes/FakeHotKeys.h"

#include <algorithm>

namespace orvane {

class FakeHotKeys::HotKey : public EventHotKey {
public:
    HotKey(FakeHotKeys& service, Registered entry) : registered(entry), m_service(service)
    {
        m_service.m_hotKeys.push_back(this);
        m_service.registered.push_back(registered);
    }
    ~HotKey() override
    {
        m_service.calls.append(QStringLiteral("unregister %1").arg(registered.id.id));
        const auto position = std::ranges::find(m_service.m_hotKeys, this);
        m_service.registered.erase(m_service.registered.begin() + (position - m_service.m_hotKeys.begin()));
        m_service.m_hotKeys.erase(position);
        std::erase_if(m_service.m_pressed, [this](const Pressed& pressed) { return pressed.hotKey == this; });
    }

    const Registered registered;

private:
    FakeHotKeys& m_service;
};

class FakeHotKeys::InstalledHandler : public EventHandler {
public:
    InstalledHandler(FakeHotKeys& service, Handler handler)
        : m_service(service), m_handler(std::make_shared<const Handler>(std::move(handler)))
    {
        m_service.calls.append(QStringLiteral("install"));
        m_service.m_handlers.insert(m_service.m_handlers.begin(), this);
    }
    ~InstalledHandler() override
    {
        m_service.calls.append(QStringLiteral("uninstall"));
        std::erase(m_service.m_handlers, this);
    }

    void addEventTypes(std::initializer_list<KeyboardEvent::Kind> kinds) override
    {
        for (const KeyboardEvent::Kind kind : kinds) {
            m_service.calls.append(QStringLiteral("add %1").arg(static_cast<std::uint32_t>(kind)));
            m_kinds.insert(kind);
        }
    }
    void removeEventTypes(std::initializer_list<KeyboardEvent::Kind> kinds) override
    {
        for (const KeyboardEvent::Kind kind : kinds) {
            m_service.calls.append(QStringLiteral("remove %1").arg(static_cast<std::uint32_t>(kind)));
            m_kinds.erase(kind);
        }
    }

    [[nodiscard]] bool wants(const KeyboardEvent* event) const
    {
        return !event || m_kinds.contains(event->kind);
    }
    OSStatus handle(const KeyboardEvent* event)
    {
        const auto handler = m_handler; // the handler may end itself
        return (*handler)(event);
    }

private:
    FakeHotKeys& m_service;
    std::set<KeyboardEvent::Kind> m_kinds;
    std::shared_ptr<const Handler> m_handler;
};

HotKeys::Registration FakeHotKeys::registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                       EventHotKeyID id)
{
    calls.append(QStringLiteral("register %1 %2 %3").arg(keyCode).arg(modifiers).arg(id.id));
    if (refusal != noErr)
        return {refusal, nullptr};
    if (taken.contains({keyCode, modifiers}))
        return {eventHotKeyExistsErr, nullptr};
    return {noErr, std::make_unique<HotKey>(*this, Registered{{keyCode, modifiers}, id})};
}

std::unique_ptr<EventHandler> FakeHotKeys::installEventHandler(Handler handler)
{
    if (!hasEventDispatcherTarget)
        return nullptr;
    return std::make_unique<InstalledHandler>(*this, std::move(handler));
}

void FakeHotKeys::press(Combination combination)
{
    if (m_down.contains(combination.keyCode))
        return; // a further press is a repeat
    const auto hotKeys = m_hotKeys;
    for (const HotKey* hotKey : hotKeys) {
        const bool isStillThere = std::ranges::find(m_hotKeys, hotKey) != m_hotKeys.end();
        if (!isStillThere || hotKey->registered.combination != combination)
            continue;
        const EventHotKeyID id = hotKey->registered.id;
        m_down.insert(combination.keyCode);
        m_pressed.push_back({combination.keyCode, hotKey, id});
        const KeyboardEvent event{KeyboardEvent::Kind::hotKeyPressed, id, {}, {}};
        (void)send(&event);
    }
}

void FakeHotKeys::release(std::uint32_t keyCode)
{
    m_down.erase(keyCode);
    for (;;) {
        const auto pressed = std::ranges::find(m_pressed, keyCode, &Pressed::keyCode);
        if (pressed == m_pressed.end())
            return;
        const KeyboardEvent event{KeyboardEvent::Kind::hotKeyReleased, pressed->id, {}, {}};
        m_pressed.erase(pressed);
        (void)send(&event);
    }
}

void FakeHotKeys::tap(Combination combination)
{
    press(combination);
    release(combination.keyCode);
}

OSStatus FakeHotKeys::sendRaw(KeyboardEvent::Kind kind, Combination combination)
{
    const KeyboardEvent event{kind, {}, combination.keyCode, combination.modifiers};
    return send(&event);
}

OSStatus FakeHotKeys::send(const KeyboardEvent* event)
{
    OSStatus status = eventNotHandledErr;
    const auto handlers = m_handlers;
    for (InstalledHandler* handler : handlers) {
        const bool isStillThere = std::ranges::find(m_handlers, handler) != m_handlers.end();
        if (!isStillThere || !handler->wants(event))
            continue;
        status = handler->handle(event);
        if (event && status != eventNotHandledErr)
            break;
    }
    return status;
}

bool FakeHotKeys::isRegistered(Combination combination) const
{
    return std::ranges::find(registered, combination, &Registered::combination) != registered.end();
}

void FakeHotKeys::setSymbolicHotKeys(std::initializer_list<Combination> combinations)
{
    QVariantList list;
    for (const Combination& combination : combinations) {
        list.append(QVariantMap{
            {QStringLiteral("kHISymbolicHotKeyEnabled"), true},
            {QStringLiteral("kHISymbolicHotKeyCode"), static_cast<int>(combination.keyCode)},
            {QStringLiteral("kHISymbolicHotKeyModifiers"), static_cast<int>(combination.modifiers)}});
    }
    symbolicHotKeys = {noErr, list};
}

} // namespace orvane
