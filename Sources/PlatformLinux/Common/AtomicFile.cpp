#include "PlatformLinux/Common/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <cerrno>
#include <climits>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace orvane {

namespace {

constexpr int maximumLinks = 40; // the kernel's own limit
constexpr int creationAttempts = 16;

/// Returns 16 random hexadecimal digits, for names that must differ.
QString randomNameSuffix()
{
    return QStringLiteral("%1").arg(QRandomGenerator::system()->generate64(), 16, 16, QLatin1Char('0'));
}

} // namespace

void throwErrno()
{
    throw std::system_error(errno, std::generic_category());
}

void synchronizeDirectoryOf(const QString& path)
{
    const QByteArray directory = QFile::encodeName(QFileInfo(path).path());
    const FileDescriptor descriptor(::open(directory.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems know no fsync of a directory. The new name is in force either way.
    if (descriptor)
        ::fsync(descriptor.get());
}

void makeDirectory(const QString& path)
{
    if (::mkdir(QFile::encodeName(path).constData(), 0700) == 0 || errno == EEXIST)
        return;
    const QString parent = QFileInfo(path).path();
    if (errno != ENOENT || parent == path)
        throwErrno();
    makeDirectory(parent);
    if (::mkdir(QFile::encodeName(path).constData(), 0700) != 0 && errno != EEXIST)
        throwErrno();
}

QString AtomicFile::resolved(const QString& path)
{
    QString current = path;
    for (int links = 0; links < maximumLinks; ++links) {
        char target[PATH_MAX];
        const ssize_t length = ::readlink(QFile::encodeName(current).constData(), target, sizeof target);
        if (length < 0)
            return current;
        const QString name = QFile::decodeName(QByteArray(target, static_cast<qsizetype>(length)));
        // The path is not cleaned: "a/../b" is not "b" when a is a link itself.
        current = QDir::isAbsolutePath(name) ? name : QString(QFileInfo(current).path() + u'/' + name);
    }
    errno = ELOOP;
    throwErrno();
}

AtomicFile::AtomicFile(const QString& path, Readers readers) : m_path(resolved(path))
{
    for (int attempt = 0; attempt < creationAttempts; ++attempt) {
        createTemporaryFile(readers);
        if (!m_temporaryPath.isEmpty())
            return;
    }
    errno = EAGAIN;
    throwErrno();
}

AtomicFile::~AtomicFile()
{
    if (!m_temporaryPath.isEmpty())
        ::unlink(QFile::encodeName(m_temporaryPath).constData());
}

/// Leaves m_temporaryPath empty when another process removed the file before it was locked.
void AtomicFile::createTemporaryFile(Readers readers)
{
    const auto mode = static_cast<mode_t>(readers);
    const QString candidate = m_path + QStringLiteral(".tmp-") + randomNameSuffix();
    const QByteArray name = QFile::encodeName(candidate);
    FileDescriptor file(::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!file && errno == EEXIST)
        return;
    if (!file)
        throwErrno();

    const bool seen = ::flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    struct stat status = {};
    if (seen || ::fstat(file.get(), &status) != 0 || status.st_nlink == 0) {
        ::unlink(name.constData());
        return;
    }
    m_temporaryPath = candidate;
    m_file = std::move(file);
    if (::fchmod(m_file.get(), mode) != 0 && errno != EPERM && errno != ENOTSUP) {
        const int reason = errno;
        ::unlink(name.constData()); // a constructor that throws has no destructor
        errno = reason;
        throwErrno();
    }
}

void AtomicFile::write(const QByteArray& bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count =
            ::write(m_file.get(), bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throwErrno();
        if (count == 0) {
            errno = ENOSPC;
            throwErrno();
        }
        done += count;
    }
}

void AtomicFile::commit()
{
    // A full or broken disk may report its error only here.
    if (::fsync(m_file.get()) != 0)
        throwErrno();
    if (::rename(QFile::encodeName(m_temporaryPath).constData(), QFile::encodeName(m_path).constData()) != 0)
        throwErrno();
    m_temporaryPath.clear();
    synchronizeDirectoryOf(m_path);
}

void AtomicFile::replace(const QString& path, const QByteArray& bytes, Readers readers)
{
    AtomicFile file(path, readers);
    file.write(bytes);
    file.commit();
}

void AtomicFile::removeLeftovers(const QString& path)
{
    static const QRegularExpression temporaryEnding(QStringLiteral("\\.tmp-[0-9a-f]{16}$"));
    const QFileInfo info(path);
    const QString beginning = info.fileName() + u'.';
    // The names are compared and not matched by wildcards: a file name may hold such characters.
    const QDir directory(info.path());
    const QStringList names = directory.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : names) {
        if (!name.startsWith(beginning) || !temporaryEnding.match(name).hasMatch())
            continue;
        const QByteArray encoded = QFile::encodeName(directory.filePath(name));
        const FileDescriptor file(
            ::open(encoded.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
            ::unlink(encoded.constData());
    }
}

} // namespace orvane
