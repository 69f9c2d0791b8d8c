#include "PlatformLinux/Defaults/DefaultsJournal.h"

#include "PlatformLinux/Defaults/DefaultsCodec.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>

namespace orvane {

namespace {

const QLatin1String pendingMark(".pending-");

void removeFile(const QString& path)
{
    ::unlink(QFile::encodeName(path).constData());
}

} // namespace

QVariantMap DefaultsJournal::adopt()
{
    static const QRegularExpression ending(QStringLiteral("^[0-9a-f]{16}$"));
    const QFileInfo info(m_defaultsPath);
    const QString beginning = info.fileName() + pendingMark;
    const QDir directory(info.path());
    const QFileInfoList files =
        directory.entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Time | QDir::Reversed);
    QVariantMap changes;
    for (const QFileInfo& file : files) {
        const QString name = file.fileName();
        if (!name.startsWith(beginning) || !ending.match(name.sliced(beginning.size())).hasMatch())
            continue;
        const QByteArray path = QFile::encodeName(file.filePath());
        FileDescriptor lock(::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (!lock || ::flock(lock.get(), LOCK_EX | LOCK_NB) != 0)
            continue;
        QFile content;
        if (!content.open(lock.get(), QIODevice::ReadOnly))
            continue;
        const auto decoded = defaultscodec::decode(content.read(defaultscodec::maximumBytes + 1));
        if (!decoded.values)
            continue;
        changes.insert(*decoded.values);
        m_adopted.push_back({file.filePath(), std::move(lock)});
    }
    return changes;
}

void DefaultsJournal::save(const QVariantMap& changes)
{
    const auto text = defaultscodec::encode(changes);
    if (!text) {
        errno = EFBIG;
        throwErrno();
    }
    const QString path = m_defaultsPath + pendingMark + randomNameSuffix();
    auto file = std::make_unique<AtomicFile>(path, AtomicFile::Readers::owner);
    file->write(*text);
    file->commit();
    if (m_file)
        removeFile(m_path);
    m_file = std::move(file);
    m_path = path;
    removeAdopted();
}

void DefaultsJournal::clear()
{
    if (m_file)
        removeFile(m_path);
    m_file.reset();
    removeAdopted();
}

void DefaultsJournal::removeAdopted()
{
    for (const Adopted& adopted : m_adopted)
        removeFile(adopted.path);
    m_adopted.clear();
}

} // namespace orvane
