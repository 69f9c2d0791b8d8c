#include "PlatformLinux/Keys/KeyNames.h"

#include "PlatformLinux/Keys/KeysymText.h"

#include <QCoreApplication>

#include <array>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace orvane {

namespace {

template <typename Code>
struct Row {
    Code code;
    const char* name;
};

constexpr std::array virtualKeys{
    Row<std::int64_t>{0x72, QT_TRANSLATE_NOOP("KeyNames", "Insert")},
    Row<std::int64_t>{0x47, QT_TRANSLATE_NOOP("KeyNames", "Num Lock")},
    Row<std::int64_t>{0x6E, QT_TRANSLATE_NOOP("KeyNames", "Menu")},
    Row<std::int64_t>{0x66, QT_TRANSLATE_NOOP("KeyNames", "Muhenkan")},
    Row<std::int64_t>{0x68, QT_TRANSLATE_NOOP("KeyNames", "Henkan")},
    Row<std::int64_t>{0x4A, QT_TRANSLATE_NOOP("KeyNames", "Mute")},
    Row<std::int64_t>{0x48, QT_TRANSLATE_NOOP("KeyNames", "Volume Up")},
    Row<std::int64_t>{0x49, QT_TRANSLATE_NOOP("KeyNames", "Volume Down")},
};

/// The symbols whose own name, taken apart, isn't what people call the key.
constexpr std::array keysyms{
    Row<xkb_keysym_t>{XKB_KEY_Print, QT_TRANSLATE_NOOP("KeyNames", "Print Screen")},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioPlay, QT_TRANSLATE_NOOP("KeyNames", "Play")},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioStop, QT_TRANSLATE_NOOP("KeyNames", "Stop")},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioPrev, QT_TRANSLATE_NOOP("KeyNames", "Previous Track")},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioNext, QT_TRANSLATE_NOOP("KeyNames", "Next Track")},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioMute, QT_TRANSLATE_NOOP("KeyNames", "Mute")},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioMicMute, QT_TRANSLATE_NOOP("KeyNames", "Microphone Mute")},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioRaiseVolume, QT_TRANSLATE_NOOP("KeyNames", "Volume Up")},
    Row<xkb_keysym_t>{XKB_KEY_XF86AudioLowerVolume, QT_TRANSLATE_NOOP("KeyNames", "Volume Down")},
    Row<xkb_keysym_t>{XKB_KEY_XF86MonBrightnessUp, QT_TRANSLATE_NOOP("KeyNames", "Brightness Up")},
    Row<xkb_keysym_t>{XKB_KEY_XF86MonBrightnessDown, QT_TRANSLATE_NOOP("KeyNames", "Brightness Down")},
    Row<xkb_keysym_t>{XKB_KEY_XF86WWW, QT_TRANSLATE_NOOP("KeyNames", "Web Browser")},
};

template <typename Code, std::size_t count>
std::optional<QString> find(const std::array<Row<Code>, count>& table, Code code)
{
    for (const Row<Code>& row : table) {
        if (row.code == code)
            return QCoreApplication::translate("KeyNames", row.name);
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
