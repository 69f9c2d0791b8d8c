// The user's well-known folders. Any thread.
#pragma once

#include <QStringList>

namespace orvane {

class FileManager {
public:
    virtual ~FileManager() = default;

    /// Absolute paths of the user's application support folders, the preferred one first. They need not
    /// exist yet. Empty when the user has no home at all.
    [[nodiscard]] virtual QStringList applicationSupportDirectories() const = 0;
};

} // namespace orvane
