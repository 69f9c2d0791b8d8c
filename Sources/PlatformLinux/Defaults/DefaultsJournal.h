// Changes that couldn't reach the defaults file yet, kept in a file beside it ("<path>.pending-<random>"),
// so that they outlive the process. A null stands for the removal of a key. Its process holds it locked
// (flock); one that nobody holds was left by a dead process, and the next to start takes it over.
// Main thread.
#pragma once

#include "PlatformLinux/Common/AtomicFile.h"

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace orvane {

class DefaultsJournal {
public:
    explicit DefaultsJournal(QString defaultsPath) : m_defaultsPath(std::move(defaultsPath)) {}

    /// Takes over what dead processes left: their changes, the younger over the older. Their files stay
    /// until these are safe elsewhere, by `save` or `clear`. One that can't be read stays for good.
    QVariantMap adopt();

    /// Brings the changes to the disk, in place of those saved before. Throws std::system_error.
    void save(const QVariantMap& changes);

    /// The changes are in the defaults file; forgets them.
    void clear();

private:
    struct Adopted {
        QString path;
        FileDescriptor lock;
    };

    void removeAdopted();

    QString m_defaultsPath;
    QString m_path; // of the own one, when there is one
    std::unique_ptr<AtomicFile> m_file;
    std::vector<Adopted> m_adopted;
};

} // namespace orvane
