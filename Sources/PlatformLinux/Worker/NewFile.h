// A file that gets its name only when it is whole, and never another file's name. Any thread but the main
// one.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace orvane {

class NewFile {
public:
    /// The file is empty and has the permissions that a new file gets.
    enum class Way {
        /// Without a name for now, where the file system can do that, so that not even a power cut leaves it
        /// behind.
        best,
        /// With a hidden name for now.
        named,
    };
    /// Nothing when no file can be made in that folder.
    [[nodiscard]] static std::optional<NewFile> in(const QString& folder, Way way = Way::best);
    ~NewFile();
    NewFile(NewFile&& other) noexcept;
    NewFile& operator=(NewFile&&) = delete;

    /// For writing.
    [[nodiscard]] int descriptor() const { return m_descriptor.get(); }

    /// Gives the file the first of the paths at which there is nothing, and returns it. They are in the
    /// folder that the file was made in. Nothing when the content doesn't reach the disk. The descriptor is
    /// another one afterwards if the nameless file couldn't get a name and was copied.
    [[nodiscard]] std::optional<QString> publish(const std::function<QString(int)>& candidate);

private:
    NewFile(FileDescriptor descriptor, QByteArray hiddenPath);

    /// Zero or an error number; EEXIST when the name is taken.
    [[nodiscard]] int give(const QByteArray& path);
    [[nodiscard]] int giveByTakingItFirst(const QByteArray& path);

    [[nodiscard]] QByteArray pathOfNameless() const;
    /// For a file system that makes nameless files and can't name them. False when it fails.
    [[nodiscard]] bool moveToNamed(const QString& folder);
    [[nodiscard]] bool isOnDisk() const;

    FileDescriptor m_descriptor;
    QByteArray m_hiddenPath; // empty without one
};

} // namespace orvane
