#include "PlatformLinux/Keys/XkbInputSources.h"

#include "Platform/NotificationCenter.h"
#include "PlatformLinux/Keys/EventKeyCodes.h"
#include "PlatformLinux/Keys/KeyNames.h"
#include "PlatformLinux/Keys/KeymapTables.h"
#include "PlatformLinux/Keys/ServerKeymap.h"

namespace orvane {

namespace {

class XkbKeyboardLayout : public KeyboardLayout {
public:
    explicit XkbKeyboardLayout(std::shared_ptr<const KeymapTables> tables) : m_tables(std::move(tables)) {}

    [[nodiscard]] std::optional<QString> keyTranslate(std::int64_t virtualKeyCode) const override
    {
        return m_tables->text(virtualKeyCode);
    }

private:
    std::shared_ptr<const KeymapTables> m_tables;
};

} // namespace

XkbInputSources::XkbInputSources(ServerKeymap& keymap, NotificationCenter& center) : m_keymap(keymap)
{
    QObject::connect(&keymap, &ServerKeymap::changed, &m_context,
                     [&center] { center.post(selectedKeyboardInputSourceChangedNotification()); });
}

std::shared_ptr<const KeyboardLayout> XkbInputSources::currentASCIICapableKeyboardLayout()
{
    auto tables = m_keymap.tables();
    return tables ? std::make_shared<XkbKeyboardLayout>(std::move(tables)) : nullptr;
}

std::optional<QString> XkbInputSources::keyName(std::int64_t keyCode)
{
    if (keyCode <= keyCodeBeyondVirtual)
        return nameOfVirtualKey(keyCode);
    const auto tables = m_keymap.tables();
    return tables ? tables->name(keyCode) : std::nullopt;
}

} // namespace orvane
