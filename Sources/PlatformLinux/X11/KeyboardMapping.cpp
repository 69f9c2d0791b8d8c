#include "PlatformLinux/X11/KeyboardMapping.h"

namespace orvane {

KeyboardMapping KeyboardMapping::read(XExchange& exchange)
{
    const xcb_setup_t& setup = exchange.link().setup();
    const auto count = static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1);
    const auto keysCookie = xcb_get_keyboard_mapping(exchange.xcb(), setup.min_keycode, count);
    const auto modifiersCookie = xcb_get_modifier_mapping(exchange.xcb());
    const auto keys = exchange.reply<xcb_get_keyboard_mapping_reply_t>(keysCookie);
    const auto modifiers = exchange.reply<xcb_get_modifier_mapping_reply_t>(modifiersCookie);
    if (!keys || !modifiers)
        return {};
    const xcb_keysym_t* keysyms = xcb_get_keyboard_mapping_keysyms(keys.get());
    const xcb_keycode_t* modifierKeys = xcb_get_modifier_mapping_keycodes(modifiers.get());
    return {.firstKey = setup.min_keycode,
            .symbolsPerKey = keys->keysyms_per_keycode,
            .keysyms = {keysyms, keysyms + xcb_get_keyboard_mapping_keysyms_length(keys.get())},
            .keysPerModifier = modifiers->keycodes_per_modifier,
            .modifierKeys = {modifierKeys,
                             modifierKeys + xcb_get_modifier_mapping_keycodes_length(modifiers.get())}};
}

KeySet keysDown(XExchange& exchange, xcb_query_keymap_cookie_t cookie)
{
    const auto reply = exchange.reply<xcb_query_keymap_reply_t>(cookie);
    KeySet keys;
    for (std::size_t key = 0; reply && key < keys.size(); ++key)
        keys.set(key, (reply->keys[key / 8] >> (key % 8) & 1) != 0);
    return keys;
}

} // namespace orvane
