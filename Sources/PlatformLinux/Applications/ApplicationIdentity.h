// Finds the bundle identifier of a program from what the desktop knows of it.
//
// The file manager, the dock and the desktop's own terminals have the identifiers of the system programs that
// they stand for; known cross-platform programs have those that they have elsewhere; every other program has
// the id of its desktop entry. Pure; any thread.
#pragma once

#include <QString>

#include <optional>

namespace orvane {

/// What the desktop knows of a program; a part is empty where it isn't known.
struct ProgramTraits {
    /// The second part of WM_CLASS, the class.
    QString windowClass;
    /// The path of the program's file.
    QString executable;
    /// The id of the program's desktop entry, without ".desktop".
    QString desktopEntryID;
};

/// Absent for a program with neither a desktop entry nor a line in the table. The class of a window alone
/// makes no identifier: any program may choose any class, and what the user excludes by it would catch
/// others as well.
std::optional<QString> bundleIdentifier(const ProgramTraits& traits);

} // namespace orvane
