#include "Platform/Pasteboard.h"

namespace orvane {

std::optional<QString> PasteboardContents::stringForType(const QString& type) const
{
    const auto found = data.constFind(type);
    return found == data.constEnd() ? std::nullopt : std::optional(QString::fromUtf8(*found));
}

std::optional<QByteArray> PasteboardContents::dataForType(const QString& type) const
{
    const auto found = data.constFind(type);
    return found == data.constEnd() ? std::nullopt : std::optional(*found);
}

} // namespace orvane
