// The four permissions that the suite may need, and their status.
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

/// Returns "accessibility", "inputMonitoring", "screenRecording" or "appleEvents".
QString rawValue(SystemPermission permission);
QString displayName(SystemPermission permission);
/// Returns one sentence on what the suite does with it.
QString explanation(SystemPermission permission);
/// Returns the page of the system's settings where it is given and taken away.
QString settingsURLString(SystemPermission permission);

} // namespace orvane
