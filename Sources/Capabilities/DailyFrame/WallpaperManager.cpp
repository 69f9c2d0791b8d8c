#include "Capabilities/DailyFrame/WallpaperManager.h"

#include "Capabilities/DailyFrame/DailyFrameText.h"
#include "Capabilities/DailyFrame/Sources/WallpaperSource.h"
#include "Platform/DesktopPicture.h"
#include "Platform/FileManager.h"
#include "Platform/Pictures.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace orvane {

namespace {

constexpr qsizetype longestStem = 120;
/// Names of files that aren't complete begin with this.
const QString unfinished = QStringLiteral(".download-");

[[noreturn]] void fail(const QString& reason)
{
    throw PlatformError(PlatformError::Kind::failed, reason);
}

QString folder(const QString& parent, const QString& name)
{
    QString path = parent + u'/' + name;
    if (parent.isEmpty() || !QDir().mkpath(path))
        fail(DailyFrameText::tr("The folder “%1” can’t be made.").arg(path));
    return path;
}

/// Removes what a process left that was killed in the middle. Only one download runs at a time.
void removeUnfinished(const QString& path)
{
    QDir dir(path);
    for (const QString& name : dir.entryList({unfinished + u'*'}, QDir::Files | QDir::Hidden))
        dir.remove(name);
}

/// Gives the file its final name, over one that has it already.
void rename(QTemporaryFile& file, const QString& path)
{
    const QByteArray from = QFile::encodeName(file.fileName());
    if (std::rename(from.constData(), QFile::encodeName(path).constData()) != 0)
        fail(QString::fromStdString(std::generic_category().message(errno)));
    file.setAutoRemove(false);
}

} // namespace

QString WallpaperManager::apply(const WallpaperItem& item, const Http::Response& picture,
                                const QList<Screen>& screens, Copy copy) const
{
    QString file = keep(item, picture);
    if (!screens.isEmpty())
        m_desktop->set(file, screens);
    if (copy == Copy::toPictures)
        copyToPictures(file);
    return file;
}

QString WallpaperManager::safeFileName(const WallpaperItem& item)
{
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9._-]"));
    QString extension = QFileInfo(item.imageURL.path()).suffix();
    if (extension.isEmpty() || extension.contains(unsafe))
        extension = QStringLiteral("jpg");
    return QString(item.id).replace(unsafe, QStringLiteral("-")).left(longestStem) + u'.' + extension;
}

QString WallpaperManager::keep(const WallpaperItem& item, const Http::Response& picture) const
{
    if (picture.status != 200)
        throw WallpaperSourceError(WallpaperSourceError::Kind::badResponse);
    const QString path =
        folder(m_folders->applicationSupportDirectories().value(0), QStringLiteral("DailyFrame"));
    removeUnfinished(path);
    QTemporaryFile file(path + u'/' + unfinished + QStringLiteral("XXXXXX"));
    if (!file.open() || file.write(picture.body) != picture.body.size() || !file.flush())
        fail(file.errorString());
    // The whole picture is decoded: one that is cut off has good measures.
    constexpr Pictures::Size small{64, 64};
    if (!m_pictures->thumbnail(file.fileName(), small, {}))
        throw WallpaperSourceError(WallpaperSourceError::Kind::badResponse);
    QString target = path + u'/' + safeFileName(item);
    rename(file, target);
    return target;
}

void WallpaperManager::copyToPictures(const QString& file) const
{
    const QString path =
        folder(m_folders->picturesDirectory().value_or(QString()), QStringLiteral("Daily Frame"));
    const QString target = path + u'/' + QFileInfo(file).fileName();
    if (QFileInfo::exists(target))
        return;
    // Under another name first, so that a copy that is cut short isn't taken for the picture.
    removeUnfinished(path);
    QFile source(file);
    QTemporaryFile copy(path + u'/' + unfinished + QStringLiteral("XXXXXX"));
    if (!source.open(QFile::ReadOnly))
        fail(source.errorString());
    const QByteArray bytes = source.readAll();
    if (!copy.open() || copy.write(bytes) != bytes.size() || !copy.flush())
        fail(copy.errorString());
    rename(copy, target);
}

} // namespace orvane
