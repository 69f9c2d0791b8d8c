// The defaults file on the disk: reading it as it is, whoever wrote it, and replacing it. Knows no log and
// no lock; the store calls on the main thread and holds the lock where it says so.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <QString>
#include <QVariant>

#include <optional>

#include <sys/stat.h>

namespace orvane {

class DefaultsFile {
public:
    enum class Content { missing, readable, unreadable };

    struct Reading {
        Content content = Content::missing;
        QVariantMap values; // when readable
        QString problem;    // when unreadable
    };

    explicit DefaultsFile(QString path) : m_path(std::move(path)) {}

    const QString& path() const { return m_path; }

    /// A file that isn't there, or a link to none, is missing. Never blocks on what isn't a plain file.
    Reading read();

    /// Whether the file is another one, or was changed, since it was last read or written here. True for
    /// one that was unreadable.
    bool hasChanged() const;

    /// Replaces the content; under the lock. Throws std::system_error; a file that is marked read-only is
    /// refused (EACCES) and so is content too large to be read again (EFBIG).
    void write(const QVariantMap& values);

    /// Renames what is there, a link included, to "<path>.corrupt-<UTC time>"; under the lock. Answers the
    /// new path, never one that was taken, or nothing when that can't be done.
    std::optional<QString> setAside();

private:
    QString readDocument(QVariantMap& values);
    void remember(FileDescriptor file);

    QString m_path;
    // Kept open, so that the file's number isn't given to another file while it is compared with.
    FileDescriptor m_file;
    struct stat m_status = {};
};

} // namespace orvane
