// A platform of fakes with fresh shortcuts, and one list of all calls on it, in order.
#pragma once

#include "Fakes/FakePlatform.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "Platform/Menu.h"

#include <gtest/gtest.h>

namespace orvane::tests {

class ShortcutsFixture : public ::testing::Test {
protected:
    using Name = KeyboardShortcuts::Name;
    using Shortcut = KeyboardShortcuts::Shortcut;

    ShortcutsFixture()
    {
        fake.defaults.onSet = [this](const QString& key, const QVariant& value) {
            const bool isText = value.typeId() == QMetaType::QString;
            journal().append(QStringLiteral("store %1 %2")
                                 .arg(key, !value.isValid() ? QStringLiteral("nothing")
                                           : isText
                                               ? value.toString()
                                               : QStringLiteral("%1 %2").arg(QLatin1String(value.typeName()),
                                                                             value.toString())));
        };
        m_observer = fake.notificationCenter.addObserver(
            KeyboardShortcuts::shortcutByNameDidChangeNotification(),
            [this](const Notification& notification) {
                const auto name = KeyboardShortcuts::changedName(notification);
                journal().append(QStringLiteral("post ") +
                                 (name ? name->rawValue() : QStringLiteral("nobody")));
            });
    }

    /// The hot key service's calls, and between them "store <key> <value>" and "post <name>".
    QStringList& journal() { return fake.hotKeys.calls; }
    QStringList takeJournal() { return std::exchange(journal(), {}); }

    static QString key(const char* name)
    {
        return QStringLiteral("KeyboardShortcuts_%1").arg(QLatin1String(name));
    }
    static Name named(const char* name) { return Name(QString::fromLatin1(name)); }
    void store(const char* name, const Shortcut& shortcut)
    {
        fake.defaults.stored.insert(key(name), QStringLiteral("{\"carbonKeyCode\":%1,\"carbonModifiers\":%2}")
                                                   .arg(shortcut.carbonKeyCode)
                                                   .arg(shortcut.carbonModifiers));
    }

    static FakeHotKeys::Combination combination(const Shortcut& shortcut)
    {
        return {static_cast<std::uint32_t>(shortcut.carbonKeyCode),
                static_cast<std::uint32_t>(shortcut.carbonModifiers)};
    }
    void press(const Shortcut& shortcut) { fake.hotKeys.press(combination(shortcut)); }
    void release(const Shortcut& shortcut) { fake.hotKeys.release(combination(shortcut).keyCode); }
    void tap(const Shortcut& shortcut) { fake.hotKeys.tap(combination(shortcut)); }
    [[nodiscard]] bool isRegistered(const Shortcut& shortcut) const
    {
        return fake.hotKeys.isRegistered(combination(shortcut));
    }

    void openMenu() { fake.notificationCenter.post(Menu::didBeginTrackingNotification()); }
    void closeMenu() { fake.notificationCenter.post(Menu::didEndTrackingNotification()); }
    EventMonitors::Disposition sendToMenu(EventType type, std::int64_t keyCode, EventFlags flags)
    {
        EventMonitors::MonitoredEvent monitored;
        monitored.event.type = type;
        monitored.event.keycode = keyCode;
        monitored.event.flags = flags;
        return fake.eventMonitors.sendToMenu(monitored);
    }

    /// Returns an action that records `word`.
    KeyboardShortcuts::Action note(const char* word)
    {
        return [this, word] { fired.append(QLatin1String(word)); };
    }

    FakePlatform fake;
    KeyboardShortcuts::StateScope state;
    QStringList fired;

private:
    std::unique_ptr<NotificationCenter::Token> m_observer;
};

inline QStringList list(std::initializer_list<const char*> texts)
{
    QStringList result;
    for (const char* text : texts)
        result.append(QString::fromUtf8(text));
    return result;
}

} // namespace orvane::tests
