#include "PlatformLinux/Keys/KeyNames.h"

#include "PlatformLinux/Keys/KeysymText.h"

#include <array>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace orvane {

namespace {

template <typename Code>
struct Row {
    Code code;
    QStringView name;
};

constexpr std::array virtualKeys{
    Row<std::int64_t>{0x72, u"Insert"},    Row<std::int64_t>{0x47, u"Num Lock"},
    Row<std::int64_t>{0x6E, u"Menu"},      Row<std::int64_t>{0x66, u"Muhenkan"},
    Row<std::int64_t>{0x68, u"Henkan"},    Row<std::int64_t>{0x4A, u"Mute"},
    Row<std::int64_t>{0x48, u"Volume Up"}, Row<std::int64_t>{0x49, u"Volume Down"},
};

/// The symbols whose own name, taken apart, isn't what people call the key.
constexpr std::array keysyms{
    Row<xkb_keysym_t>{XKB_KEY_Print, u"Print Screen"},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioPlay, u"Play"},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioStop, u"Stop"},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioPrev, u"Previous Track"},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioNext, u"Next Track"},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioMute, u"Mute"},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioMicMute, u"Microphone Mute"},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioRaiseVolume, u"Volume Up"},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioLowerVolume, u"Volume Down"},
    Row<xkb_keysym_t>{XKB_KEY_XF86MonBrightnessUp, u"Brightness Up"},
    Row<xkb_keysym_t>{XKB_KEY_XF86MonBrightnessDown, u"Brightness Down"},
    Row<xkb_keysym_t>{XKB_KEY_XF86WWW, u"Web Browser"},
};

template <typename Code, std::size_t count>
std::optional<QString> find(const std::array<Row<Code>, count>& table, Code code)
{
    for (const Row<Code>& row : table) {
        if (row.code == code)
            return row.name.toString();
    }
    return std::nullopt;
}

bool isModifier(xkb_keysym_t keysym)
{
    return (keysym >= XKB_KEY_Shift_L && keysym <= XKB_KEY_Hyper_R) ||
           (keysym >= XKB_KEY_ISO_Lock && keysym <= XKB_KEY_ISO_Level5_Lock) || keysym == XKB_KEY_Mode_switch;
}

/// Makes "Launch Mail" of "XF86LaunchMail".
QString wordsOf(QString symbol)
{
    if (symbol.startsWith(u"XF86"))
        symbol.remove(0, 4);
    QString words;
    for (qsizetype i = 0; i < symbol.size(); ++i) {
        const bool beginsWord = i > 0 && symbol[i].isUpper() && symbol[i - 1].isLower();
        if (beginsWord)
            words += u' ';
        words += symbol[i] == u'_' ? QChar(u' ') : symbol[i];
    }
    return words;
}

} // namespace

std::optional<QString> nameOfVirtualKey(std::int64_t virtualKeyCode)
{
    return find(virtualKeys, virtualKeyCode);
}

std::optional<QString> nameOfKeysym(std::uint32_t keysym)
{
    if (keysym == XKB_KEY_NoSymbol || isModifier(keysym) || !keysymText(keysym).isEmpty())
        return std::nullopt;
    if (auto name = find(keysyms, xkb_keysym_t{keysym}))
        return name;
    constexpr std::size_t longestName = 64;
    std::array<char, longestName> symbol{};
    if (xkb_keysym_get_name(keysym, symbol.data(), symbol.size()) <= 0)
        return std::nullopt;
    return wordsOf(QString::fromLatin1(symbol.data()));
}

} // namespace orvane
