// The notations in which desktops store a shortcut. Pure; any thread.
#pragma once

#include <QList>
#include <QString>
#include <QStringView>
#include <QVariantMap>

#include <cstdint>
#include <optional>

namespace orvane {

struct Accelerator {
    /// In Carbon bits.
    std::uint32_t modifiers = 0;
    /// The keysym, in lower case for a letter. 0 when the key is meant by its place.
    std::uint32_t keysym = 0;
    std::optional<int> virtualKeyCode = {};
    friend bool operator==(const Accelerator&, const Accelerator&) = default;
};

/// Parses "<Primary><Alt>t", the notation of GTK and of the desktops built on it. Nothing for a text that
/// isn't a shortcut of one key and our four modifiers.
std::optional<Accelerator> parseGtkAccelerator(QStringView text);

/// Parses "Meta+Ctrl+Esc", the notation of KDE's file.
std::optional<Accelerator> parseKdeAccelerator(QStringView text);

/// Returns the strings in a printed GVariant: "['<Alt>F4', '<Super>q']".
QStringList stringsInVariant(QStringView text);

/// Returns the shortcuts that a file kglobalshortcutsrc puts in force.
QList<Accelerator> parseKdeShortcutsFile(QStringView content);

/// Returns the shortcuts that the properties of Xfce's channel for them put in force.
QList<Accelerator> acceleratorsOfXfconf(const QVariantMap& properties);

} // namespace orvane
