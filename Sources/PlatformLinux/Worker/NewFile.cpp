#include "PlatformLinux/Worker/NewFile.h"

#include <QFile>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

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
        const QByteArray own = "/proc/self/fd/" + QByteArray::number(m_descriptor.get());
        return ::linkat(AT_FDCWD, own.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) == 0
                   ? 0
                   : errno;
    }
    if (::renameat2(AT_FDCWD, m_hiddenPath.constData(), AT_FDCWD, path.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    return errno == EINVAL || errno == ENOSYS ? giveByTakingItFirst(path) : errno;
}

std::optional<QString> NewFile::publish(const std::function<QString(int)>& candidate)
{
    for (int index = 0; index < mostCandidates; ++index) {
        QString path = candidate(index);
        const int error = give(QFile::encodeName(path));
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
