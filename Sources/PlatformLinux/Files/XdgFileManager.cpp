#include "PlatformLinux/Files/XdgFileManager.h"

namespace orvane {

XdgFileManager::XdgFileManager(XdgDirectories directories) : m_directories(std::move(directories)) {}

QStringList XdgFileManager::applicationSupportDirectories() const
{
    if (!m_directories.data)
        return {};
    return {*m_directories.data};
}

} // namespace orvane
