// The symbols that the keys of a keymap print, and the keys on which they are, by the key codes of events: a
// copy that doesn't need the keymap any more. Pure; any thread.
#pragma once

#include <QHash>
#include <QString>

#include <array>
#include <cstdint>
#include <optional>

struct xkb_keymap;

namespace orvane {

class KeymapTables {
public:
    struct Place {
        /// A virtual key code or one beyond them.
        int keyCode = 0;
        enum class Level { plain, shifted } level = Level::plain;
        friend bool operator==(const Place&, const Place&) = default;
    };

    /// `group` is the layout in use, counted from 0.
    static KeymapTables of(xkb_keymap* keymap, std::uint32_t group);

    /// Reads the layout in use or, where that doesn't type Latin letters, the first one that does. Nothing
    /// for a key that prints nothing, or more than four UTF-16 units.
    [[nodiscard]] std::optional<QString> text(std::int64_t virtualKeyCode) const;
    /// Returns the name of a key without a virtual code. Nothing for a key that prints something.
    [[nodiscard]] std::optional<QString> name(std::int64_t keyCode) const;
    /// Returns the key that types a symbol; on the layout in use, if it is there.
    [[nodiscard]] std::optional<Place> placeOf(std::uint32_t keysym) const;

private:
    static constexpr std::size_t virtualKeyCodeCount = 0x80;

    std::array<QString, virtualKeyCodeCount> m_texts;
    QHash<std::int64_t, QString> m_names;
    QHash<std::uint32_t, Place> m_places;
};

} // namespace orvane
