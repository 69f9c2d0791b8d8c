#include "PlatformLinux/Defaults/DefaultsFile.h"

#include "PlatformLinux/Common/AtomicFile.h"
#include "PlatformLinux/Defaults/DefaultsCoding.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace orvane {

namespace {

using Content = DefaultsFile::Content;
using Outcome = DefaultsFile::Outcome;

constexpr int setAsideAttempts = 1000;

QString errorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

DefaultsFile::Reading unreachable(int error)
{
    return {Content::unreachable, {}, QStringLiteral("it can't be read (%1)").arg(errorText(error)), error};
}

DefaultsFile::Reading invalid(const QString& problem)
{
    return {Content::invalid, {}, problem};
}

/// Returns 0, or the errno. Stops beyond the size at which parsing refuses the text.
int readAll(const FileDescriptor& file, QByteArray& text)
{
    char buffer[65536];
    while (text.size() <= defaultscoding::maximumBytes) {
        const ssize_t count = ::read(file.get(), buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        if (count == 0)
            break;
        text.append(buffer, static_cast<qsizetype>(count));
    }
    return 0;
}

/// Tells a file that is marked read-only for its owner too, or lies on a read-only file system. The
/// superuser's power to write everywhere isn't what such a mark asks for.
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

/// Returns the lock on the folder, which ends with the descriptor. Nothing while another process has it. A
/// folder that may not be opened, or whose file system has no locks, gives an empty descriptor or an unlocked
/// one.
std::optional<FileDescriptor> lockFolder(const QString& path, DefaultsFile::Turn turn)
{
    FileDescriptor folder(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder && errno != EACCES && errno != ENOENT)
        throwErrno();
    const bool isBusy = folder && ::flock(folder.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (isBusy && turn == DefaultsFile::Turn::wait)
        return std::nullopt;
    return folder;
}

void apply(const DefaultsFile::Changes& changes, QJsonObject& values)
{
    for (auto it = changes.begin(); it != changes.end(); ++it) {
        if (it.value().isUndefined())
            values.remove(it.key());
        else
            values.insert(it.key(), it.value());
    }
}

DefaultsFile::Result failure(const std::system_error& error)
{
    const int number = error.code().value();
    const bool isRefusal = number == EACCES || number == EPERM || number == EROFS;
    return {isRefusal ? Outcome::refused : Outcome::failed, {}, QString::fromLocal8Bit(error.what()), {}};
}

} // namespace

DefaultsFile::Reading DefaultsFile::read() const
{
    const FileDescriptor file(
        ::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file) {
        if (errno == ENOENT)
            return {};
        if (errno == ELOOP)
            return invalid(QStringLiteral("it is a loop of links"));
        if (errno == ENXIO)
            return invalid(QStringLiteral("it is not a plain file"));
        return unreachable(errno);
    }
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0)
        return unreachable(errno);
    if (S_ISDIR(status.st_mode))
        return invalid(QStringLiteral("it is a directory"));
    if (!S_ISREG(status.st_mode))
        return invalid(QStringLiteral("it is not a plain file"));

    QByteArray text;
    if (const int error = readAll(file, text))
        return unreachable(error);
    auto parsed = defaultscoding::parse(text);
    if (!parsed.values)
        return invalid(parsed.problem);
    return {Content::valid, std::move(*parsed.values), {}};
}

DefaultsFile::Result DefaultsFile::merge(const Changes& changes, const QJsonObject& known, Turn turn)
{
    try {
        const QString folder = QFileInfo(m_path).path();
        if (!changes.isEmpty())
            makeDirectory(folder);
        const auto lock = lockFolder(folder, turn);
        if (!lock)
            return {Outcome::busy, {}, {}, {}};
        removeLeftovers();
        return mergeInTurn(changes, known);
    } catch (const std::system_error& error) {
        return failure(error);
    }
}

DefaultsFile::Result DefaultsFile::mergeInTurn(const Changes& changes, const QJsonObject& known)
{
    const Reading reading = read();
    Result result{Outcome::done, reading.content == Content::valid ? reading.values : known, {}, {}};
    if (reading.content == Content::unreachable)
        throw std::system_error(reading.error, std::generic_category(), "it can't be read");
    if (reading.content == Content::invalid) {
        result.problem = reading.problem;
        result.setAsideAs = setAside();
        if (result.setAsideAs.isEmpty()) {
            result.outcome = Outcome::refused;
            result.problem += QStringLiteral(", and it can't be renamed either");
            return result;
        }
    }
    apply(changes, result.values);
    if (changes.isEmpty() || result.values == reading.values)
        return result;
    try {
        write(result.values);
    } catch (const std::system_error& error) {
        // The name of the file that was set aside has to reach the log.
        auto failed = failure(error);
        failed.setAsideAs = result.setAsideAs;
        return failed;
    }
    return result;
}

void DefaultsFile::removeLeftovers()
{
    if (std::exchange(m_leftoversAreRemoved, true))
        return;
    AtomicFile::removeLeftovers(m_path);
    try {
        const QString target = AtomicFile::resolved(m_path);
        if (target != m_path)
            AtomicFile::removeLeftovers(target);
    } catch (const std::system_error&) {
        // A loop of links, which is set aside.
    }
}

void DefaultsFile::write(const QJsonObject& values) const
{
    const QByteArray text = QJsonDocument(values).toJson();
    if (text.size() > defaultscoding::maximumBytes)
        throw std::system_error(EFBIG, std::generic_category(), "the settings are too large");
    AtomicFile file(m_path, AtomicFile::Readers::owner);
    if (isReadOnly(QFile::encodeName(file.path())))
        throw std::system_error(EACCES, std::generic_category(), "it is marked read-only");
    file.write(text);
    file.commit();
}

/// Renames what is there, or a link itself. Returns the new path, never one that was taken, or an empty one
/// when that can't be done.
QString DefaultsFile::setAside() const
{
    const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    const QString wanted = m_path + QStringLiteral(".corrupt-") + time;
    QString candidate = wanted;
    for (int count = 2; count < setAsideAttempts; ++count) {
        const int error = renameWithoutReplacing(QFile::encodeName(m_path), QFile::encodeName(candidate));
        if (error == 0) {
            synchronizeDirectoryOf(m_path);
            return candidate;
        }
        if (error != EEXIST && error != ENOTEMPTY)
            return {};
        candidate = wanted + u'-' + QString::number(count);
    }
    return {};
}

} // namespace orvane
