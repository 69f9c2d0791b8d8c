#include "PlatformLinux/Defaults/DefaultsFile.h"

#include "PlatformLinux/Common/AtomicFile.h"
#include "PlatformLinux/Defaults/DefaultsCodec.h"

#include <QDateTime>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

#include <fcntl.h>

namespace orvane {

namespace {

constexpr int setAsideAttempts = 1000;

QString errorText(int error)
{
    return QString::fromLocal8Bit(::strerror(error));
}

bool sameTime(const timespec& left, const timespec& right)
{
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

/// Marked read-only for its owner too, or on a read-only file system. The superuser's power to write
/// everywhere isn't what such a mark asks for.
bool isReadOnly(const QByteArray& path)
{
    struct stat status = {};
    if (::stat(path.constData(), &status) != 0)
        return false; // the writing tells
    return (status.st_mode & 0222) == 0 || ::faccessat(AT_FDCWD, path.constData(), W_OK, AT_EACCESS) != 0;
}

/// 0, or the errno.
int renameWithoutReplacing(const QByteArray& from, const QByteArray& to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    // A file system without the flag. The lock keeps our own kind away in between.
    struct stat status = {};
    if (::lstat(to.constData(), &status) == 0)
        return EEXIST;
    return ::rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

} // namespace

DefaultsFile::Reading DefaultsFile::read()
{
    m_file.reset();
    m_status = {};
    FileDescriptor file(
        ::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file && errno == ENOENT)
        return {};
    if (!file)
        return {Content::unreadable, {}, QStringLiteral("it can't be opened (%1)").arg(errorText(errno))};
    remember(std::move(file));
    Reading reading;
    reading.problem = readDocument(reading.values);
    if (reading.problem.isEmpty()) {
        reading.content = Content::readable;
    } else {
        reading.content = Content::unreadable;
        m_file.reset(); // never taken for a file that may be replaced
    }
    return reading;
}

/// What is wrong, or nothing.
QString DefaultsFile::readDocument(QVariantMap& values)
{
    if (S_ISDIR(m_status.st_mode))
        return QStringLiteral("it is a directory");
    if (!S_ISREG(m_status.st_mode))
        return QStringLiteral("it is not a plain file");
    if (m_status.st_size > defaultscodec::maximumBytes)
        return QStringLiteral("it is larger than %1 bytes").arg(defaultscodec::maximumBytes);

    QByteArray text;
    for (;;) {
        char buffer[65536];
        const ssize_t count = ::read(m_file.get(), buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return QStringLiteral("it can't be read (%1)").arg(errorText(errno));
        if (count == 0)
            break;
        text.append(buffer, static_cast<qsizetype>(count));
        if (text.size() > defaultscodec::maximumBytes) // it grows while it is read
            break;
    }
    auto decoded = defaultscodec::decode(text);
    if (!decoded.values)
        return decoded.problem;
    values = std::move(*decoded.values);
    values.removeIf([](const auto& entry) { return !entry.value().isValid(); }); // a null is no value
    return {};
}

bool DefaultsFile::hasChanged() const
{
    struct stat now = {};
    if (::stat(QFile::encodeName(m_path).constData(), &now) != 0)
        return static_cast<bool>(m_file) || errno != ENOENT;
    return !m_file || now.st_dev != m_status.st_dev || now.st_ino != m_status.st_ino ||
           now.st_size != m_status.st_size || !sameTime(now.st_mtim, m_status.st_mtim);
}

void DefaultsFile::write(const QVariantMap& values)
{
    const auto text = defaultscodec::encode(values);
    if (!text) {
        errno = EFBIG;
        throwErrno();
    }
    AtomicFile file(m_path, AtomicFile::Readers::owner);
    if (isReadOnly(QFile::encodeName(file.path()))) {
        throw std::system_error(EACCES, std::generic_category(), "it is marked read-only");
    }
    file.write(*text);
    file.commit();
    remember(file.release());
}

void DefaultsFile::remember(FileDescriptor file)
{
    m_file = std::move(file);
    if (::fstat(m_file.get(), &m_status) != 0)
        m_status = {}; // counts as changed
}

std::optional<QString> DefaultsFile::setAside()
{
    const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    const QString wanted = m_path + QStringLiteral(".corrupt-") + time;
    QString candidate = wanted;
    for (int count = 2; count < setAsideAttempts; ++count) {
        const int error = renameWithoutReplacing(QFile::encodeName(m_path), QFile::encodeName(candidate));
        if (error == 0) {
            synchronizeDirectoryOf(m_path);
            m_file.reset();
            return candidate;
        }
        if (error != EEXIST && error != ENOTEMPTY)
            return std::nullopt;
        candidate = wanted + u'-' + QString::number(count);
    }
    return std::nullopt;
}

} // namespace orvane
