// The texts that windows carry, from the bytes that the server gives. Any program may have written anything
// there. Pure; any thread.
#pragma once

#include <QString>

#include <string>

namespace orvane {

/// WM_CLASS.
struct WindowClass {
    QString instance;
    QString name;
    friend bool operator==(const WindowClass&, const WindowClass&) = default;
};
[[nodiscard]] WindowClass windowClassOf(const std::string& property);

/// Reads _NET_WM_NAME or, where that is empty, the older WM_NAME.
[[nodiscard]] QString windowTitleOf(const std::string& name, const std::string& oldName);

/// Returns the id in a property that names a desktop entry by its id, its file or the path of that; without
/// ".desktop".
[[nodiscard]] QString desktopEntryIDOf(const std::string& property);

} // namespace orvane
