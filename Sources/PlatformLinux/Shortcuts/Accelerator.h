// The ways in which desktops write a shortcut down. Pure; any thread.
#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace orvane {

struct Accelerator {
    /// Carbon bits.
    std::uint32_t modifiers = 0;
    /// The lower-case one of a letter. 0 when the key is meant by its place.
    std::uint32_t keysym = 0;
    std::optional<int> virtualKeyCode = {};
    friend bool operator==(const Accelerator&, const Accelerator&) = default;
};

/// "<Primary><Alt>t": GTK's, and that of the desktops built on it. Nothing for what is no shortcut of one key
/// and our four modifiers.
std::optional<Accelerator> parseGtkAccelerator(QStringView text);

/// "Meta+Ctrl+Esc": that of KDE's file.
std::optional<Accelerator> parseKdeAccelerator(QStringView text);

/// The strings in a printed GVariant: "['<Alt>F4', '<Super>q']".
QStringList stringsInVariant(QStringView text);

/// The shortcuts that are in force by a file kglobalshortcutsrc.
QList<Accelerator> parseKdeShortcutsFile(QStringView content);

} // namespace orvane
