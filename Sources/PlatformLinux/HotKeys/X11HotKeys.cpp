#include "PlatformLinux/HotKeys/X11HotKeys.h"

#include "PlatformLinux/Common/LinuxText.h"
#include "PlatformLinux/HotKeys/HotKeyGrabs.h"
#include "PlatformLinux/Keys/EventKeyCodes.h"
#include "PlatformLinux/Shortcuts/DesktopShortcuts.h"

#include <algorithm>
#include <set>
#include <vector>

namespace orvane {

namespace {

constexpr std::uint32_t hotKeyModifiers =
    carbonModifier::command | carbonModifier::shift | carbonModifier::option | carbonModifier::control;

} // namespace

struct X11HotKeys::State {
    explicit State(LogSink& log)
        : grabs(log, {[this](const KeyCombination& combination) { press(combination); },
                      [this](std::uint8_t key) { release(key); }})
    {
    }

    void press(const KeyCombination& combination);
    void release(std::uint8_t key);
    void send(const KeyboardEvent& event);

    std::vector<HotKey*> hotKeys;
    /// The newest first.
    std::vector<InstalledHandler*> handlers;
    HotKeyGrabs grabs;
};

class X11HotKeys::HotKey : public EventHotKey {
public:
    HotKey(const std::shared_ptr<State>& state, const KeyCombination& keys, EventHotKeyID hotKeyId)
        : combination(keys), id(hotKeyId), m_state(state)
    {
        state->hotKeys.push_back(this);
    }
    ~HotKey() override
    {
        const auto state = m_state.lock();
        if (!state)
            return;
        std::erase(state->hotKeys, this);
        state->grabs.remove(combination);
    }

    const KeyCombination combination;
    const EventHotKeyID id;
    bool isPressed = false;

private:
    std::weak_ptr<State> m_state;
};

class X11HotKeys::InstalledHandler : public EventHandler {
public:
    InstalledHandler(const std::shared_ptr<State>& state, Handler handler)
        : m_state(state), m_handler(std::make_shared<const Handler>(std::move(handler)))
    {
        state->handlers.insert(state->handlers.begin(), this);
    }
    ~InstalledHandler() override
    {
        if (const auto state = m_state.lock())
            std::erase(state->handlers, this);
    }

    void addEventTypes(std::initializer_list<KeyboardEvent::Kind> kinds) override { m_kinds.insert(kinds); }
    void removeEventTypes(std::initializer_list<KeyboardEvent::Kind> kinds) override
    {
        for (const KeyboardEvent::Kind kind : kinds)
            m_kinds.erase(kind);
    }

    [[nodiscard]] bool wants(KeyboardEvent::Kind kind) const { return m_kinds.contains(kind); }
    OSStatus handle(const KeyboardEvent& event)
    {
        const auto handler = m_handler; // the handler may end itself
        return (*handler)(&event);
    }

private:
    std::weak_ptr<State> m_state;
    std::set<KeyboardEvent::Kind> m_kinds;
    std::shared_ptr<const Handler> m_handler;
};

void X11HotKeys::State::press(const KeyCombination& combination)
{
    const auto snapshot = hotKeys;
    for (HotKey* hotKey : snapshot) {
        const bool isStillThere = std::ranges::find(hotKeys, hotKey) != hotKeys.end();
        if (!isStillThere || hotKey->combination != combination)
            continue;
        hotKey->isPressed = true;
        send({KeyboardEvent::Kind::hotKeyPressed, hotKey->id, {}, {}});
    }
}

void X11HotKeys::State::release(std::uint8_t key)
{
    const auto snapshot = hotKeys;
    for (HotKey* hotKey : snapshot) {
        const bool isStillThere = std::ranges::find(hotKeys, hotKey) != hotKeys.end();
        if (!isStillThere || hotKey->combination.xKey != key || !hotKey->isPressed)
            continue;
        hotKey->isPressed = false;
        send({KeyboardEvent::Kind::hotKeyReleased, hotKey->id, {}, {}});
    }
}

void X11HotKeys::State::send(const KeyboardEvent& event)
{
    const auto snapshot = handlers;
    for (InstalledHandler* handler : snapshot) {
        const bool isStillThere = std::ranges::find(handlers, handler) != handlers.end();
        if (isStillThere && handler->wants(event.kind) && handler->handle(event) != eventNotHandledErr)
            return;
    }
}

X11HotKeys::X11HotKeys(LogSink& log, DesktopShortcuts& desktopShortcuts, SessionKind session)
    : m_state(std::make_shared<State>(log)), m_desktopShortcuts(desktopShortcuts), m_session(session)
{
}

X11HotKeys::~X11HotKeys() = default;

QString X11HotKeys::limitation() const
{
    switch (m_session) {
    case SessionKind::xwayland:
        return LinuxText::tr("In this Wayland session shortcuts would work only while an X11 program has the "
                             "focus, so they are off. In an X11 session they work everywhere.");
    case SessionKind::waylandAlone:
    case SessionKind::withoutServer:
        return LinuxText::tr("There is no X server, through which Orvane gets its shortcuts.");
    case SessionKind::x11:
        break;
    }
    return {};
}

HotKeys::Registration X11HotKeys::registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                      EventHotKeyID id)
{
    if (!limitation().isEmpty())
        return {unimpErr, nullptr};
    const auto key = xKeyOfEvent(keyCode);
    if (!key)
        return {eventHotKeyInvalidErr, nullptr};
    const KeyCombination combination{*key, modifiers & hotKeyModifiers};
    const OSStatus status = m_state->grabs.add(combination);
    if (status != noErr)
        return {status, nullptr};
    return {noErr, std::make_unique<HotKey>(m_state, combination, id)};
}

void X11HotKeys::letGoOfKeyboard()
{
    m_state->grabs.letGoOfKeyboard();
}

void X11HotKeys::giveWayTo(std::uint32_t keyCode, std::uint32_t modifiers)
{
    if (const auto key = xKeyOfEvent(keyCode))
        m_state->grabs.giveWayTo({*key, modifiers & hotKeyModifiers});
}

std::unique_ptr<EventHandler> X11HotKeys::installEventHandler(Handler handler)
{
    return std::make_unique<InstalledHandler>(m_state, std::move(handler));
}

HotKeys::SymbolicHotKeys X11HotKeys::copySymbolicHotKeys()
{
    QVariantList list;
    for (const DesktopShortcuts::Shortcut& shortcut : m_desktopShortcuts.shortcuts()) {
        list.append(QVariantMap{{QStringLiteral("kHISymbolicHotKeyEnabled"), true},
                                {QStringLiteral("kHISymbolicHotKeyCode"), shortcut.keyCode},
                                {QStringLiteral("kHISymbolicHotKeyModifiers"), shortcut.modifiers}});
    }
    return {noErr, list};
}

} // namespace orvane
