#include "Capabilities/ClipboardHistory/Archive/HistoryArchive.h"

#include "Capabilities/ClipboardHistory/Archive/HistoryCodec.h"
#include "Capabilities/ClipboardHistory/Archive/PlainFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QSet>

#include <stdexcept>

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

std::optional<QString> HistoryArchive::imagePath(const QString& fileName) const
{
    const bool isBareName = !fileName.isEmpty() && !fileName.contains(u'/') &&
                            !fileName.contains(QChar::Null) && fileName != QLatin1StringView(".") &&
                            fileName != QLatin1StringView("..");
    return isBareName ? std::optional<QString>(imagesPath() + u'/' + fileName) : std::nullopt;
}

QList<ClipItem> HistoryArchive::load() const
{
    const auto json = PlainFile::content(historyPath());
    return json ? HistoryCodec::decode(*json).value_or(QList<ClipItem>()) : QList<ClipItem>();
}

void HistoryArchive::save(const QList<ClipItem>& items) const
{
    ensureDirectories();
    QSaveFile file(historyPath());
    if (!file.open(QIODevice::WriteOnly))
        return;
    // A file system without modes refuses, and keeps the list all the same.
    file.setPermissions(ownersFile);
    file.write(HistoryCodec::encode(items));
    // A commit would not notice bytes that it can't write to a full disk.
    if (file.flush())
        file.commit();
}

bool HistoryArchive::writeImage(const QString& fileName, const QByteArray& png) const
{
    ensureDirectories();
    const auto path = imagePath(fileName);
    if (!path)
        return false;
    QFile file(*path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, ownersFile))
        return false;
    if (file.write(png) == png.size() && file.flush())
        return true;
    file.remove();
    return false;
}

void HistoryArchive::removeImage(const QString& fileName) const
{
    if (const auto path = imagePath(fileName))
        QFile::remove(*path);
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

void HistoryArchive::requireDirectory() const
{
    if (!ensureDirectory()) {
        throw std::runtime_error(QStringLiteral("The folder for the clipboard history can't be created: %1")
                                     .arg(directory)
                                     .toStdString());
    }
}

bool HistoryArchive::ensureDirectory() const
{
    QDir().mkpath(QFileInfo(directory).path());
    ensureOwnersDirectory(directory);
    return QFileInfo(directory).isDir();
}

void HistoryArchive::ensureDirectories() const
{
    if (ensureDirectory())
        ensureOwnersDirectory(imagesPath());
}

} // namespace orvane
