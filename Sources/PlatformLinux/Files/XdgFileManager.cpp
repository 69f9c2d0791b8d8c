#include "PlatformLinux/Files/XdgFileManager.h"

#include <QStandardPaths>

namespace orvane {

XdgFileManager::XdgFileManager(XdgDirectories directories) : m_directories(std::move(directories)) {}

QStringList XdgFileManager::applicationSupportDirectories() const
{
    if (!m_directories.data)
        return {};
    return {*m_directories.data};
}

std::optional<QString> XdgFileManager::picturesDirectory() const
{
    const QString path = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return path.isEmpty() ? std::nullopt : std::optional(path);
}

} // namespace orvane
