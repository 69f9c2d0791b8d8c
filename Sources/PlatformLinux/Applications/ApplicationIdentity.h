// From what the desktop tells of a program to the bundle identifier that the logic knows it by.
//
// The file manager, the dock and the desktop's own terminals answer to the identifiers of the system
// programs they stand for; known cross-platform programs to those they have elsewhere; every other program
// to the id of its desktop entry. Pure; any thread.
#pragma once

#include <QString>

#include <optional>

namespace orvane {

/// Each part is empty where nothing tells of it.
struct ProgramTraits {
    /// The class of WM_CLASS, its second part.
    QString windowClass;
    /// The path of the program's file.
    QString executable;
    /// The id of its desktop entry, without ".desktop".
    QString desktopEntryID;
};

/// Absent for a program with neither a desktop entry nor a line in the table. The class of a window alone
/// makes no identifier: any program may choose any class, and what the user excludes by it would catch
/// others as well.
std::optional<QString> bundleIdentifier(const ProgramTraits& traits);

} // namespace orvane
