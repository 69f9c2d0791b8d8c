// Helper for tests of hot keys: the events of a handler, as text.
#pragma once

#include "Platform/HotKeys.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace orvane::tests {

// Virtual key codes.
namespace virtualKey {
inline constexpr std::uint32_t j = 38, k = 40;
} // namespace virtualKey

inline constexpr std::uint32_t controlOption = carbonModifier::control | carbonModifier::option;

/// A handler of hot keys that records "+1" for the press of the one with the id 1, "-1" for its release.
class HotKeyLog {
public:
    explicit HotKeyLog(HotKeys& hotKeys)
        : m_handler(hotKeys.installEventHandler([this](const KeyboardEvent* event) { return note(event); }))
    {
        using enum KeyboardEvent::Kind;
        m_handler->addEventTypes({hotKeyPressed, hotKeyReleased});
    }

    EventHandler& handler() { return *m_handler; }
    [[nodiscard]] const QStringList& events() const { return m_events; }
    [[nodiscard]] QString text() const { return m_events.join(QLatin1Char(' ')); }
    /// Called after each event is recorded.
    std::function<void()> onEvent = [] {};

private:
    OSStatus note(const KeyboardEvent* event)
    {
        if (!event || !event->directObject)
            return eventNotHandledErr;
        const bool isPress = event->kind == KeyboardEvent::Kind::hotKeyPressed;
        m_events.append(QLatin1String(isPress ? "+" : "-") + QString::number(event->directObject->id));
        onEvent();
        return noErr;
    }

    QStringList m_events;
    std::unique_ptr<EventHandler> m_handler;
};

constexpr EventHotKeyID hotKeyId(std::uint32_t id)
{
    return {0x54455354, id};
}

} // namespace orvane::tests
