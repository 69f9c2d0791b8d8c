#include "PlatformLinux/Worker/NewFile.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvane {

namespace {

constexpr mode_t permissions = 0666; // less the user's mask
constexpr int mostCandidates = 100'000;

} // namespace

std::optional<NewFile> NewFile::in(const QString& folder, Way way)
{
    const QByteArray place = QFile::encodeName(folder);
    if (way == Way::best) {
        FileDescriptor nameless(::open(place.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, permissions));
        if (nameless)
            return NewFile(std::move(nameless), {});
    }
    const QByteArray hidden =
        place + "/.orvane-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16) + ".part";
    FileDescriptor named(::open(hidden.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, permissions));
    if (!named)
        return std::nullopt;
    return NewFile(std::move(named), hidden);
}

NewFile::NewFile(FileDescriptor descriptor, QByteArray hiddenPath)
    : m_descriptor(std::move(descriptor)), m_hiddenPath(std::move(hiddenPath))
{
}

NewFile::NewFile(NewFile&& other) noexcept
    : m_descriptor(std::move(other.m_descriptor)), m_hiddenPath(std::exchange(other.m_hiddenPath, {}))
{
}

NewFile::~NewFile()
{
    if (!m_hiddenPath.isEmpty())
        ::unlink(m_hiddenPath.constData());
}

QByteArray NewFile::pathOfNameless() const
{
    return "/proc/self/fd/" + QByteArray::number(m_descriptor.get());
}

int NewFile::giveByTakingItFirst(const QByteArray& path)
{
    // For a file system that knows neither way of not replacing a file. The name is empty for a moment.
    const FileDescriptor taken(
        ::open(path.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, permissions));
    if (!taken)
        return errno;
    if (::rename(m_hiddenPath.constData(), path.constData()) == 0)
        return 0;
    const int error = errno;
    ::unlink(path.constData());
    return error;
}

int NewFile::give(const QByteArray& path)
{
    if (m_hiddenPath.isEmpty()) {
        return ::linkat(AT_FDCWD, pathOfNameless().constData(), AT_FDCWD, path.constData(),
                        AT_SYMLINK_FOLLOW) == 0
                   ? 0
                   : errno;
    }
    if (::renameat2(AT_FDCWD, m_hiddenPath.constData(), AT_FDCWD, path.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    return errno == EINVAL || errno == ENOSYS ? giveByTakingItFirst(path) : errno;
}

bool NewFile::moveToNamed(const QString& folder)
{
    auto named = in(folder, Way::named);
    const FileDescriptor content(::open(pathOfNameless().constData(), O_RDONLY | O_CLOEXEC));
    struct stat status {};
    if (!named || !content || ::fstat(content.get(), &status) != 0)
        return false;
    for (off_t left = status.st_size; left > 0;) {
        const ssize_t count = ::sendfile(named->descriptor(), content.get(), nullptr, left);
        if (count <= 0)
            return false;
        left -= count;
    }
    m_descriptor = std::move(named->m_descriptor);
    m_hiddenPath = std::exchange(named->m_hiddenPath, {});
    return isOnDisk();
}

bool NewFile::isOnDisk() const
{
    // Some file systems can't be asked.
    return ::fdatasync(m_descriptor.get()) == 0 || errno == EINVAL || errno == ENOSYS;
}

std::optional<QString> NewFile::publish(const std::function<QString(int)>& candidate)
{
    if (!isOnDisk())
        return std::nullopt;
    for (int index = 0; index < mostCandidates; ++index) {
        QString path = candidate(index);
        int error = give(QFile::encodeName(path));
        if (error != 0 && error != EEXIST && m_hiddenPath.isEmpty() && moveToNamed(QFileInfo(path).path()))
            error = give(QFile::encodeName(path));
        if (error == 0) {
            m_hiddenPath.clear();
            return path;
        }
        if (error != EEXIST)
            return std::nullopt;
    }
    return std::nullopt;
}

} // namespace orvane
