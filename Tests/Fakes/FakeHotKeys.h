// A hot key service whose keys the test presses.
#pragma once

#include "Platform/HotKeys.h"

#include <QStringList>

#include <optional>
#include <set>
#include <vector>

namespace orvane {

class FakeHotKeys : public HotKeys {
public:
    struct Combination {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        // The check takes the 0 of the comparison for a pointer.
        // NOLINTNEXTLINE(modernize-use-nullptr)
        friend auto operator<=>(const Combination&, const Combination&) = default;
    };
    struct Registered {
        Combination combination;
        EventHotKeyID id;
    };

    [[nodiscard]] QString limitation() const override { return limit; }
    Registration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                     EventHotKeyID id) override;
    std::unique_ptr<EventHandler> installEventHandler(Handler handler) override;
    SymbolicHotKeys copySymbolicHotKeys() override { return symbolicHotKeys; }

    /// Acts as the keyboard does: tells the handlers of each registration of the combination. The release is
    /// that of the key, whatever modifiers are still down.
    void press(Combination combination);
    void release(std::uint32_t keyCode);
    /// Presses and releases.
    void tap(Combination combination);
    /// Sends a raw key event; returns the answer of the last handler.
    OSStatus sendRaw(KeyboardEvent::Kind kind, Combination combination);
    /// Sends to each handler that has the kind, the newest first, until one takes it. A null event goes to
    /// all.
    OSStatus send(const KeyboardEvent* event);

    [[nodiscard]] bool isRegistered(Combination combination) const;
    /// Sets enabled shortcuts of the desktop.
    void setSymbolicHotKeys(std::initializer_list<Combination> combinations);

    /// Existing registrations, in the order in which they were made.
    std::vector<Registered> registered;
    /// Combinations that other programs hold.
    std::set<Combination> taken;
    /// The status with which every registration is refused.
    OSStatus refusal = noErr;
    QString limit;
    /// False if there is nothing to install a handler on.
    bool hasEventDispatcherTarget = true;
    /// The system's answer; an empty list at first.
    SymbolicHotKeys symbolicHotKeys{noErr, QVariantList()};
    /// Each call in order: "register 49 4096 1" (key, modifiers, id), "unregister 1", "install", "add 5",
    /// "remove 5", "uninstall".
    QStringList calls;

private:
    class HotKey;
    class InstalledHandler;

    struct Pressed {
        std::uint32_t keyCode;
        const HotKey* hotKey;
        EventHotKeyID id;
    };

    std::vector<HotKey*> m_hotKeys;
    std::vector<InstalledHandler*> m_handlers;
    std::vector<Pressed> m_pressed;
    /// Keys that are down: further presses of them are repeats.
    std::set<std::uint32_t> m_down;
};

} // namespace orvane
