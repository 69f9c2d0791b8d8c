// Opens a picture file of one of the known formats, whatever its name says. Throws vips::VError or
// std::runtime_error when it can't.
#pragma once

#include "Platform/Protocols/WorkerProtocol.h"

#include <optional>
#include <string>
#include <string_view>

#include <vips/vips8>

namespace orvane {

class PictureFile {
public:
    enum class Format { jpeg, png, webp, tiff, gif, heif, bmp };

    /// The descriptor stays open for as long as the object and the images from it live.
    explicit PictureFile(int descriptor);

    [[nodiscard]] Format format() const { return m_format; }
    /// Returns the text that a PNG file keeps under that keyword; nothing for other formats.
    [[nodiscard]] std::optional<std::string> text(std::string_view keyword) const;

    /// Returns the size of the first frame as it is stored. Throws for one that is too large.
    [[nodiscard]] WorkerProtocol::PictureSize size() const;

    /// Returns the first frame for a reading from top to bottom, where the format offers it already made
    /// smaller, but at least twice as large as `target`.
    [[nodiscard]] vips::VImage load(WorkerProtocol::PictureSize target) const;

private:
    [[nodiscard]] static Format formatOf(int descriptor);
    [[nodiscard]] vips::VImage open(vips::VOption* options) const;

    int m_descriptor;
    Format m_format;
};

} // namespace orvane
