// Small pictures of files of any kind, as the desktop shows them. Calls block, on the disk, on the desktop's
// thumbnailer and on the work itself, each at most for a time limit of the platform's: any thread but the
// main one.
#pragma once

#include "Platform/Pictures.h"

namespace orvane {

class Thumbnails {
public:
    virtual ~Thumbnails() = default;

    /// Returns a picture of the file at that absolute path, fitted into `most`. Nothing where there is none:
    /// the file's icon is shown then.
    [[nodiscard]] virtual std::optional<Pictures::Pixels> thumbnail(const QString& path, Pictures::Size most,
                                                                    std::stop_token stop) = 0;
};

} // namespace orvane
