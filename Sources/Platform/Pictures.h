// Reading, measuring and copying of picture files that anybody may have made. All calls block, on the disk
// and on the work itself, each at most for a time limit of the platform's: any thread but the main one. A
// picture that can't be read, is damaged, or is too large is told by an empty result.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <stop_token>

namespace orvane {

class Pictures {
public:
    /// In pixels, as they are stored: no orientation is applied.
    struct Size {
        int width = 0;
        int height = 0;
        friend bool operator==(const Size&, const Size&) = default;
    };

    enum class Type { jpeg, png, heic, tiff };

    struct Copy {
        /// An absolute path.
        QString source;
        /// As `measure` has told it. A file that has another size now isn't copied.
        Size sourceSize;
        Size size;
        Type type = Type::jpeg;
        /// From 0 to 1; used for JPEG alone.
        double quality = 1;
        /// Returns the paths that the copy may have, the best at 0, all in one folder. The copy gets the
        /// first one at which there is nothing.
        std::function<QString(int)> candidate;
    };

    struct Pixels {
        Size size;
        /// Rows without gaps; four bytes for a pixel: red, green, blue, alpha, premultiplied.
        QByteArray bytes;
    };

    enum class Foreign { bmp, jpeg, tiff };

    virtual ~Pictures() = default;

    [[nodiscard]] virtual std::optional<Size> measure(const QString& path, std::stop_token stop) = 0;

    /// Writes the first frame, in the sRGB colour space with eight bits for a channel and without metadata.
    /// Returns the path of the new file, which appears there only when it is whole. Nothing is ever
    /// overwritten.
    [[nodiscard]] virtual std::optional<QString> writeCopy(const Copy& copy, std::stop_token stop) = 0;

    /// Returns the picture, made so small that it fits into `most`.
    [[nodiscard]] virtual std::optional<Pixels> thumbnail(const QString& path, Size most,
                                                          std::stop_token stop) = 0;

    /// Returns a picture in memory as PNG, in its full size and the sRGB colour space. Bytes of another
    /// format than the one that is named give nothing.
    [[nodiscard]] virtual std::optional<QByteArray> png(const QByteArray& bytes, Foreign format,
                                                        std::stop_token stop) = 0;
};

} // namespace orvane
