// The four privileges that the suite may need, and how they stand.
#pragma once

#include <QString>

#include <array>

namespace orvane {

enum class SystemPermission { accessibility, inputMonitoring, screenRecording, appleEvents };

inline constexpr std::array allSystemPermissions{
    SystemPermission::accessibility,
    SystemPermission::inputMonitoring,
    SystemPermission::screenRecording,
    SystemPermission::appleEvents,
};

enum class PermissionStatus { granted, denied, notDetermined };

inline bool isGranted(PermissionStatus status)
{
    return status == PermissionStatus::granted;
}

/// "accessibility", "inputMonitoring", "screenRecording", "appleEvents".
QString rawValue(SystemPermission permission);
QString displayName(SystemPermission permission);
/// One sentence on what the suite does with it.
QString explanation(SystemPermission permission);
/// The page of the system's settings where it is given and taken.
QString settingsURLString(SystemPermission permission);

} // namespace orvane
