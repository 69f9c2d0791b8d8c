#include "PlatformLinux/Keys/KeysymText.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace orvane {

namespace {

struct Accent {
    xkb_keysym_t keysym;
    char16_t text;
};

// The accents as characters of their own, not the combining ones, which would be drawn over the character
// before them.
constexpr Accent accents[] = {
    {XKB_KEY_dead_grave, u'`'},
    {XKB_KEY_dead_acute, u'\u00B4'},
    {XKB_KEY_dead_circumflex, u'^'},
    {XKB_KEY_dead_tilde, u'~'},
    {XKB_KEY_dead_macron, u'\u00AF'},
    {XKB_KEY_dead_breve, u'\u02D8'},
    {XKB_KEY_dead_abovedot, u'\u02D9'},
    {XKB_KEY_dead_diaeresis, u'\u00A8'},
    {XKB_KEY_dead_abovering, u'\u02DA'},
    {XKB_KEY_dead_doubleacute, u'\u02DD'},
    {XKB_KEY_dead_caron, u'\u02C7'},
    {XKB_KEY_dead_cedilla, u'\u00B8'},
    {XKB_KEY_dead_ogonek, u'\u02DB'},
    {XKB_KEY_dead_iota, u'\u037A'},
    {XKB_KEY_dead_voiced_sound, u'\u309B'},
    {XKB_KEY_dead_semivoiced_sound, u'\u309C'},
    {XKB_KEY_dead_belowdot, u'.'},
    {XKB_KEY_dead_stroke, u'/'},
    {XKB_KEY_dead_abovecomma, u'\u02BC'},
    {XKB_KEY_dead_abovereversedcomma, u'\u02BD'},
    {XKB_KEY_dead_doublegrave, u'\u02F5'},
    {XKB_KEY_dead_currency, u'\u00A4'},
    {XKB_KEY_dead_greek, u'\u00B5'},
};

} // namespace

QString keysymText(std::uint32_t keysym)
{
    for (const Accent& accent : accents) {
        if (accent.keysym == keysym)
            return QString(QChar(accent.text));
    }
    const char32_t character = xkb_keysym_to_utf32(keysym);
    if (character == 0 || QChar::category(character) == QChar::Other_Control)
        return {};
    return QString::fromUcs4(&character, 1);
}

} // namespace orvane
