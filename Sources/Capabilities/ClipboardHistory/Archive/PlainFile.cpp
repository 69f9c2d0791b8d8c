#include "Capabilities/ClipboardHistory/Archive/PlainFile.h"

#include <QFile>
#include <QFileInfo>

namespace orvane::PlainFile {

std::optional<QByteArray> content(const QString& path)
{
    // Opening a pipe or a device could wait for ever.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace orvane::PlainFile
