// Replaces a file as a whole: the bytes are written beside it under a temporary name, brought to the disk
// and renamed over it, so a reader sees the old bytes or the new ones. The writer holds its temporary file
// locked (flock), which tells it from one that a killed process left. Any thread, one at a time per object.
// Failures are thrown as std::system_error with the errno of the step that failed.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace orvane {

class AtomicFile {
public:
    /// The users who may read the file. The mode is set as it is here, regardless of the umask.
    enum class Readers : mode_t { owner = 0600, everyone = 0644 };

    /// Creates the temporary file. Symbolic links at `path` are followed: what they name is replaced.
    AtomicFile(const QString& path, Readers readers);
    /// Without a commit the temporary file goes and the old file stays.
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    void write(const QByteArray& bytes);
    /// The new content is in place and on the disk when this returns.
    void commit();

    /// The path of the file itself, with links followed.
    [[nodiscard]] const QString& path() const { return m_path; }

    static void replace(const QString& path, const QByteArray& bytes, Readers readers);

    /// The path with every link of its last part followed; what it names need not exist. Throws on a loop.
    [[nodiscard]] static QString resolved(const QString& path);

    /// Removes the temporary files of dead writers of `path`, and of files whose names go on from its name
    /// with a full stop. Those of living writers stay. Never throws.
    static void removeLeftovers(const QString& path);

private:
    void createTemporaryFile(Readers readers);

    QString m_path;
    QString m_temporaryPath; // empty once committed
    FileDescriptor m_file;
};

/// Brings a change of names in the folder of `path` to the disk, as well as the file system can.
void synchronizeDirectoryOf(const QString& path);

/// Creates the folder and those above it for the user alone. Throws std::system_error.
void makeDirectory(const QString& path);

/// Throws std::system_error with the present errno.
[[noreturn]] void throwErrno();

} // namespace orvane
