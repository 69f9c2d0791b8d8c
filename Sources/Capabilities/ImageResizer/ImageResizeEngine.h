// The work on one file: measure, fit, and have a copy written beside it. Any thread but the main one, where
// it touches files; nothing is shared.
#pragma once

#include "Capabilities/ImageResizer/ImageResizeMath.h"
#include "Capabilities/ImageResizer/ResizeFormat.h"
#include "Platform/Pictures.h"

#include <QSet>

namespace orvane::ImageResizeEngine {

/// What is the same for all files of a batch.
struct Options {
    QSizeF box;
    ImageResizeMath::Enlarging enlarging = ImageResizeMath::Enlarging::no;
    ResizeFormat format = ResizeFormat::keepOriginal;
    /// From 0 to 1; for JPEG alone.
    double quality = 1;
    /// Goes into the names of the new files.
    QString label;
};

struct Output {
    Pictures::Type type;
    QString extension;
    friend bool operator==(const Output&, const Output&) = default;
};

/// In lower case, without the dot.
[[nodiscard]] const QSet<QString>& supportedExtensions();
/// Returns what follows the last dot of a path's name, in lower case. A dot at the beginning of the name
/// doesn't count.
[[nodiscard]] QString lowerCasedExtension(const QString& path);

/// "The same format" of a picture that can't be written in it is JPEG under the extension that it has.
[[nodiscard]] Output outputType(const QString& path, ResizeFormat format);
/// Returns the path for a copy: without a counter at 0, with 2 at 1, with 3 at 2.
[[nodiscard]] QString outputPath(const QString& path, const QString& label, const QString& extension,
                                 int index);

/// Returns the path of the new file. Nothing when the source can't be read or the copy can't be written.
[[nodiscard]] std::optional<QString> resize(Pictures& pictures, const QString& path, const Options& options,
                                            std::stop_token stop);

} // namespace orvane::ImageResizeEngine
