// A hot key service whose keys are pressed by the test.
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
        friend auto operator<=>(const Combination&, const Combination&) = default;
    };
    struct Registered {
        Combination combination;
        EventHotKeyID id;
    };

    Registration registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                     EventHotKeyID id) override;
    std::unique_ptr<EventHandler> installEventHandler(Handler handler) override;
    SymbolicHotKeys copySymbolicHotKeys() override { return symbolicHotKeys; }

    /// What the keyboard does: tells the handlers of each registration of the combination. The release is
    /// that of the key, whatever is left of the modifiers.
    void press(Combination combination);
    void release(std::uint32_t keyCode);
    /// Both.
    void tap(Combination combination);
    /// A raw key event; the last handler's word.
    OSStatus sendRaw(KeyboardEvent::Kind kind, Combination combination);
    /// To each handler that has the kind, the newest first, until one takes it. No event goes to all.
    OSStatus send(const KeyboardEvent* event);

    bool isRegistered(Combination combination) const;
    /// As enabled shortcuts of the desktop.
    void setSymbolicHotKeys(std::initializer_list<Combination> combinations);

    /// In place, in order of their making.
    std::vector<Registered> registered;
    /// Other programs hold these.
    std::set<Combination> taken;
    /// What every registration is refused with.
    OSStatus refusal = noErr;
    /// Whether there is something to install a handler on.
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
    /// Keys whose further presses are repeats.
    std::set<std::uint32_t> m_down;
};

} // namespace orvane
