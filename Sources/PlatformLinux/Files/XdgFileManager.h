// The user's folders: application support is the data home of the XDG base directories.
#pragma once

#include "Platform/FileManager.h"
#include "PlatformLinux/Common/XdgDirectories.h"

namespace orvane {

class XdgFileManager : public FileManager {
public:
    explicit XdgFileManager(XdgDirectories directories = XdgDirectories::ofThisProcess());

    [[nodiscard]] QStringList applicationSupportDirectories() const override;
    [[nodiscard]] std::optional<QString> picturesDirectory() const override;

private:
    XdgDirectories m_directories;
};

} // namespace orvane
