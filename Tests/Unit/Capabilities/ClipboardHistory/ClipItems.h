// Entries for the tests of the history.
#pragma once

#include "Capabilities/ClipboardHistory/Store/ClipItem.h"

namespace orvane::tests {

inline ClipItem clip(ClipKind kind, const QString& text)
{
    return ClipItem{.id = QUuid::createUuid(), .kind = kind, .text = text};
}

inline ClipItem textClip(const QString& text)
{
    return clip(ClipKind::text, text);
}

inline ClipItem pinnedClip(const QString& text)
{
    ClipItem item = textClip(text);
    item.pinned = true;
    return item;
}

inline ClipItem imageClip(const QString& fileName)
{
    return ClipItem{.id = QUuid::createUuid(), .kind = ClipKind::image, .imageFileName = fileName};
}

inline ClipItem filesClip(const QStringList& paths, std::optional<QString> text)
{
    return ClipItem{
        .id = QUuid::createUuid(), .kind = ClipKind::fileURLs, .text = std::move(text), .filePaths = paths};
}

} // namespace orvane::tests
