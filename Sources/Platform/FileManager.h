// The user's well-known folders. Any thread.
#pragma once

#include <QStringList>

#include <optional>

namespace orvane {

class FileManager {
public:
    virtual ~FileManager() = default;

    /// Absolute paths of the user's application support folders, the preferred one first. They need not
    /// exist yet. Empty when the user has no home at all.
    [[nodiscard]] virtual QStringList applicationSupportDirectories() const = 0;
    /// Returns the absolute path of the folder for the user's pictures, which need not exist yet. Absent when
    /// the user has no home at all.
    [[nodiscard]] virtual std::optional<QString> picturesDirectory() const = 0;
};

} // namespace orvane
