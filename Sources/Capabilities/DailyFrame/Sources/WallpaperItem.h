// One picture that a service offers.
#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace orvane {

struct WallpaperItem {
    /// Stays the same for the picture, and begins with the source's name; also the stem of its file's name.
    QString id;
    QUrl imageURL;
    /// May be empty.
    QString title;
    QString credit;
    std::optional<QUrl> creditURL;
    QString sourceName;

    friend bool operator==(const WallpaperItem&, const WallpaperItem&) = default;
};

} // namespace orvane
