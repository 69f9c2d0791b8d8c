// One entry of the clipboard history. A value.
#pragma once

#include "OrvaneCore/Base/EnumNames.h"

#include <QString>
#include <QStringList>
#include <QUuid>

#include <array>
#include <chrono>
#include <optional>

namespace orvane {

enum class ClipKind { text, url, image, fileURLs };

/// The names on the disk.
inline constexpr std::array clipKindNames{
    EnumName{ClipKind::text, "text"},
    EnumName{ClipKind::url, "url"},
    EnumName{ClipKind::image, "image"},
    EnumName{ClipKind::fileURLs, "fileURLs"},
};
constexpr const auto& enumNames(ClipKind)
{
    return clipKindNames;
}
static_assert(isInOrder<ClipKind>());

struct ClipItem {
    /// Time since 2001-01-01T00:00:00Z, with its fraction, exactly as the disk holds it.
    using Date = std::chrono::duration<double>;

    /// New for every capture.
    QUuid id = {};
    ClipKind kind = ClipKind::text;
    /// For a text as it was read, for a link trimmed, for files their names joined by ", "; absent for an
    /// image.
    std::optional<QString> text = std::nullopt;
    /// For an image: a bare name in the image folder, never a path.
    std::optional<QString> imageFileName = std::nullopt;
    /// For files: absolute paths in the order in which they were copied.
    std::optional<QStringList> filePaths = std::nullopt;
    Date date{0};
    bool pinned = false;
    /// The identifier of the application in front at the time, for display only.
    std::optional<QString> sourceApp = std::nullopt;

    static Date dateFrom(std::chrono::system_clock::time_point time);

    /// True if kind, text, paths and image name are those of `other`; strings are compared by canonical
    /// equivalence.
    [[nodiscard]] bool contentEquals(const ClipItem& other) const;
    /// Returns what its texts and paths take up in memory.
    [[nodiscard]] qint64 textBytes() const;
    /// Returns the one line that stands for the entry, which is all that a search looks at.
    [[nodiscard]] QString preview() const;

    friend bool operator==(const ClipItem&, const ClipItem&) = default;
};

} // namespace orvane
