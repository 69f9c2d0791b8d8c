#include "PlatformLinux/Shortcuts/Accelerator.h"

#include "Platform/HotKeys.h"

#include <QStringList>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace orvane {

namespace {

struct ModifierName {
    QLatin1String name;
    /// 0 changes nothing.
    std::uint32_t modifier;
};

// Meta is on Alt's modifier unless the user has moved it. Missing here are those that our four can't express,
// such as Hyper.
constexpr ModifierName gtkModifiers[] = {
    {QLatin1String("shift"), carbonModifier::shift},     {QLatin1String("shft"), carbonModifier::shift},
    {QLatin1String("control"), carbonModifier::control}, {QLatin1String("ctrl"), carbonModifier::control},
    {QLatin1String("ctl"), carbonModifier::control},     {QLatin1String("primary"), carbonModifier::control},
    {QLatin1String("alt"), carbonModifier::option},      {QLatin1String("mod1"), carbonModifier::option},
    {QLatin1String("meta"), carbonModifier::option},     {QLatin1String("super"), carbonModifier::command},
    {QLatin1String("mod4"), carbonModifier::command},    {QLatin1String("release"), 0},
};

constexpr ModifierName kdeModifiers[] = {
    {QLatin1String("shift"), carbonModifier::shift},
    {QLatin1String("ctrl"), carbonModifier::control},
    {QLatin1String("alt"), carbonModifier::option},
    {QLatin1String("meta"), carbonModifier::command},
};

struct KeyName {
    QLatin1String name;
    xkb_keysym_t keysym;
};

/// The keys whose name in Qt, without its spaces, isn't their name in X with or without "XF86" before it.
constexpr KeyName kdeKeys[] = {
    {QLatin1String("Esc"), XKB_KEY_Escape},
    {QLatin1String("Backtab"), XKB_KEY_ISO_Left_Tab},
    {QLatin1String("Backspace"), XKB_KEY_BackSpace},
    {QLatin1String("Enter"), XKB_KEY_KP_Enter},
    {QLatin1String("Ins"), XKB_KEY_Insert},
    {QLatin1String("Del"), XKB_KEY_Delete},
    {QLatin1String("PgUp"), XKB_KEY_Page_Up},
    {QLatin1String("PgDown"), XKB_KEY_Page_Down},
    {QLatin1String("Space"), XKB_KEY_space},
    {QLatin1String("CapsLock"), XKB_KEY_Caps_Lock},
    {QLatin1String("NumLock"), XKB_KEY_Num_Lock},
    {QLatin1String("ScrollLock"), XKB_KEY_Scroll_Lock},
    {QLatin1String("VolumeMute"), XKB_KEY_XF86AudioMute},
    {QLatin1String("VolumeDown"), XKB_KEY_XF86AudioLowerVolume},
    {QLatin1String("VolumeUp"), XKB_KEY_XF86AudioRaiseVolume},
};

/// The key left of 1, as GNOME names it.
constexpr int keyAboveTab = 0x32;

template <std::size_t size>
std::optional<std::uint32_t> modifierNamed(const ModifierName (&names)[size], QStringView name)
{
    for (const ModifierName& known : names) {
        if (name.compare(known.name, Qt::CaseInsensitive) == 0)
            return known.modifier;
    }
    return std::nullopt;
}

xkb_keysym_t keysymNamed(const QString& name)
{
    return xkb_keysym_to_lower(xkb_keysym_from_name(name.toUtf8().constData(), XKB_KEYSYM_NO_FLAGS));
}

xkb_keysym_t kdeKeysym(QStringView name)
{
    if (name.size() == 1)
        return xkb_keysym_to_lower(xkb_utf32_to_keysym(name.front().unicode()));
    QString bare = name.toString();
    bare.remove(QLatin1Char(' '));
    for (const KeyName& known : kdeKeys) {
        if (bare == known.name)
            return known.keysym;
    }
    const xkb_keysym_t keysym = keysymNamed(bare);
    return keysym != XKB_KEY_NoSymbol ? keysym : keysymNamed(QLatin1String("XF86") + bare);
}

} // namespace

std::optional<Accelerator> parseGtkAccelerator(QStringView text)
{
    Accelerator made;
    while (text.startsWith(u'<')) {
        const qsizetype end = text.indexOf(u'>');
        if (end < 0)
            return std::nullopt;
        const auto modifier = modifierNamed(gtkModifiers, text.sliced(1, end - 1));
        if (!modifier)
            return std::nullopt;
        made.modifiers |= *modifier;
        text = text.sliced(end + 1);
    }
    if (text == QLatin1String("Above_Tab")) {
        made.virtualKeyCode = keyAboveTab;
        return made;
    }
    made.keysym = keysymNamed(text.toString());
    return made.keysym != XKB_KEY_NoSymbol ? std::optional(made) : std::nullopt;
}

std::optional<Accelerator> parseKdeAccelerator(QStringView text)
{
    Accelerator made;
    // The key itself may be a plus.
    for (qsizetype plus = text.indexOf(u'+'); plus > 0; plus = text.indexOf(u'+')) {
        const auto modifier = modifierNamed(kdeModifiers, text.first(plus));
        if (!modifier)
            break;
        made.modifiers |= *modifier;
        text = text.sliced(plus + 1);
    }
    made.keysym = kdeKeysym(text);
    return made.keysym != XKB_KEY_NoSymbol ? std::optional(made) : std::nullopt;
}

QStringList stringsInVariant(QStringView text)
{
    QStringList strings;
    QString present;
    QChar quote; // null outside of a string
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quote.isNull()) {
            if (c == u'\'' || c == u'"')
                quote = c;
        } else if (c == quote) {
            strings.append(std::exchange(present, {}));
            quote = {};
        } else if (c == u'\\' && i + 1 < text.size()) {
            present += text[++i];
        } else {
            present += c;
        }
    }
    return strings;
}

namespace {

QString withoutEscapes(QStringView value)
{
    QString plain;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\' || i + 1 == value.size()) {
            plain += value[i];
            continue;
        }
        ++i;
        plain += value[i] == u't' ? QChar(u'\t') : value[i] == u's' ? QChar(u' ') : value[i];
    }
    return plain;
}

/// Returns the first of a list's fields, in which a comma has a backslash before it.
QString firstField(QStringView list)
{
    QString field;
    for (qsizetype i = 0; i < list.size() && list[i] != u','; ++i) {
        if (list[i] == u'\\' && i + 1 < list.size())
            ++i;
        field += list[i];
    }
    return field;
}

} // namespace

QList<Accelerator> parseKdeShortcutsFile(QStringView content)
{
    QList<Accelerator> found;
    for (const QStringView line : content.split(u'\n')) {
        const qsizetype equals = line.indexOf(u'=');
        const bool isNameForPeople = line.startsWith(u"_k_");
        if (equals <= 0 || line.startsWith(u'[') || line.startsWith(u'#') || isNameForPeople)
            continue;
        // The fields are the shortcuts in force, the default ones and a name; for the start of a program
        // there is only the first.
        const QString shortcuts = firstField(withoutEscapes(line.sliced(equals + 1).trimmed()));
        for (const QString& shortcut : shortcuts.split(QLatin1Char('\t'), Qt::SkipEmptyParts)) {
            if (const auto accelerator = parseKdeAccelerator(shortcut))
                found.append(*accelerator);
        }
    }
    return found;
}

namespace {

/// Tells the keys that the window manager listens to only while a window is moved, resized or chosen.
bool isOfAMode(const QString& action)
{
    static const QStringList ofModes{QStringLiteral("cancel_key"), QStringLiteral("left_key"),
                                     QStringLiteral("right_key"), QStringLiteral("up_key"),
                                     QStringLiteral("down_key")};
    return ofModes.contains(action);
}

} // namespace

QList<Accelerator> acceleratorsOfXfconf(const QVariantMap& properties)
{
    QList<Accelerator> found;
    for (const QString& provider : {QStringLiteral("/commands/"), QStringLiteral("/xfwm4/")}) {
        const bool isCustom = properties.value(provider + QLatin1String("custom/override")).toBool();
        const QString base = provider + QLatin1String(isCustom ? "custom/" : "default/");
        for (auto property = properties.lowerBound(base);
             property != properties.end() && property.key().startsWith(base); ++property) {
            // A property that isn't a string describes the one above it.
            const bool isShortcut = property->typeId() == QMetaType::QString;
            const QString action = property->toString();
            if (!isShortcut || action.isEmpty() || isOfAMode(action))
                continue;
            if (const auto accelerator = parseGtkAccelerator(QStringView(property.key()).sliced(base.size())))
                found.append(*accelerator);
        }
    }
    return found;
}

} // namespace orvane
