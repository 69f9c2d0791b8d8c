#include "CapabilityClipboardHistory/HistoryArchive.h"

#include "CapabilityClipboardHistory/HistoryCodec.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QSet>

namespace orvane {

namespace {

constexpr QFile::Permissions ownersFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions ownersDirectory = ownersFile | QFile::ExeOwner;

void ensureOwnersDirectory(const QString& path)
{
    if (!QDir().mkdir(path, ownersDirectory))
        QFile::setPermissions(path, ownersDirectory);
}

/// Removes a file, a link itself, or a folder with its content.
void removeItem(const QFileInfo& item)
{
    if (item.isDir() && !item.isSymLink())
        QDir(item.filePath()).removeRecursively();
    else
        QFile::remove(item.filePath());
}

} // namespace

QString HistoryArchive::historyPath() const
{
    return directory + QStringLiteral("/history.json");
}

QString HistoryArchive::imagesPath() const
{
    return directory + QStringLiteral("/images");
}

void HistoryArchive::save(const QList<ClipItem>& items) const
{
    ensureDirectories();
    QSaveFile file(historyPath());
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(ownersFile))
        return;
    file.write(HistoryCodec::encode(items));
    file.commit();
}

void HistoryArchive::pruneImages(const QList<ClipItem>& keepingItems) const
{
    QSet<QString> kept;
    for (const ClipItem& item : keepingItems) {
        if (item.imageFileName)
            kept.insert(*item.imageFileName);
    }
    const QFileInfoList listed =
        QDir(imagesPath())
            .entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                           QDir::Unsorted);
    for (const QFileInfo& item : listed) {
        if (!kept.contains(item.fileName()))
            removeItem(item);
    }
}

void HistoryArchive::purge() const
{
    const QFileInfo item(directory);
    if (item.exists() || item.isSymLink())
        removeItem(item);
}

void HistoryArchive::ensureDirectories() const
{
    const QString parent = QFileInfo(directory).path();
    QDir().mkpath(parent);
    ensureOwnersDirectory(directory);
    ensureOwnersDirectory(imagesPath());
}

} // namespace orvane
