#include "Worker/PictureFile.h"

#include "Worker/Bitmap.h"

#include <algorithm>
#include <array>
#include <memory>
#include <stdexcept>
#include <string_view>

#include <unistd.h>

namespace orvane {

using namespace std::string_view_literals;
using vips::VImage;
using vips::VSource;

namespace {

bool isHeif(std::string_view beginning)
{
    if (beginning.size() < 12 || beginning.substr(4, 4) != "ftyp"sv)
        return false;
    constexpr std::array brands{"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv, "mif1"sv, "msf1"sv};
    return std::ranges::find(brands, beginning.substr(8, 4)) != brands.end();
}

/// Returns by how much a picture may be shrunk while it is loaded, so that the rest is left to a better
/// filter.
double shrinkWhileLoading(WorkerProtocol::PictureSize size, WorkerProtocol::PictureSize target)
{
    return std::min(double(size.width) / target.width, double(size.height) / target.height) / 2;
}

int jpegShrink(double wanted)
{
    for (const int shrink : {8, 4, 2}) {
        if (wanted >= shrink)
            return shrink;
    }
    return 1;
}

} // namespace

PictureFile::PictureFile(int descriptor) : m_descriptor(descriptor), m_format(formatOf(descriptor)) {}

PictureFile::Format PictureFile::formatOf(int descriptor)
{
    std::array<char, 16> bytes{};
    const ssize_t count = ::pread(descriptor, bytes.data(), bytes.size(), 0);
    const std::string_view beginning(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (beginning.starts_with("\xFF\xD8\xFF"sv))
        return Format::jpeg;
    if (beginning.starts_with("\x89PNG\r\n\x1A\n"sv))
        return Format::png;
    if (beginning.starts_with("RIFF"sv) && beginning.substr(8).starts_with("WEBP"sv))
        return Format::webp;
    if (beginning.starts_with("II*\0"sv) || beginning.starts_with("MM\0*"sv) ||
        beginning.starts_with("II+\0"sv) || beginning.starts_with("MM\0+"sv))
        return Format::tiff;
    if (beginning.starts_with("GIF87a"sv) || beginning.starts_with("GIF89a"sv))
        return Format::gif;
    if (beginning.starts_with("BM"sv))
        return Format::bmp;
    if (isHeif(beginning))
        return Format::heif;
    throw std::runtime_error("no picture of a known format");
}

VImage PictureFile::open(vips::VOption* options) const
{
    // A damaged picture is no picture: half of one would look like a whole one by its name.
    options->set("access", VIPS_ACCESS_SEQUENTIAL)->set("fail_on", VIPS_FAIL_ON_ERROR);
    ::lseek(m_descriptor, 0, SEEK_SET);
    const VSource source = VSource::new_from_descriptor(m_descriptor);
    switch (m_format) {
    case Format::jpeg:
        return VImage::jpegload_source(source, options);
    case Format::png:
        return VImage::pngload_source(source, options);
    case Format::webp:
        return VImage::webpload_source(source, options);
    case Format::tiff:
        return VImage::tiffload_source(source, options);
    case Format::gif:
        return VImage::gifload_source(source, options);
    case Format::heif:
        return VImage::heifload_source(source, options);
    case Format::bmp:
        break;
    }
    delete options;
    throw std::logic_error("a bitmap has a reader of its own");
}

std::optional<std::string> PictureFile::text(std::string_view keyword) const
{
    if (m_format != Format::png)
        return std::nullopt;
    const VImage image = open(VImage::option());
    const std::unique_ptr<char*, decltype(&g_strfreev)> fields(::vips_image_get_fields(image.get_image()),
                                                               &g_strfreev);
    for (char** field = fields.get(); field && *field; ++field) {
        // "png-comment-", the number of the text, a hyphen, and its keyword
        const std::string_view name(*field);
        if (name.starts_with("png-comment-") && name.ends_with("-" + std::string(keyword)))
            return image.get_string(*field);
    }
    return std::nullopt;
}

WorkerProtocol::PictureSize PictureFile::size() const
{
    WorkerProtocol::PictureSize size;
    if (m_format == Format::bmp) {
        size = Bitmap::size(m_descriptor);
    } else {
        const VImage image = open(VImage::option());
        size = {static_cast<std::uint32_t>(image.width()), static_cast<std::uint32_t>(image.height())};
    }
    if (!WorkerProtocol::isAllowed(size))
        throw std::runtime_error("the picture is too large");
    return size;
}

VImage PictureFile::load(WorkerProtocol::PictureSize target) const
{
    if (m_format == Format::bmp)
        return Bitmap::load(m_descriptor);
    vips::VOption* options = VImage::option();
    const double shrink = shrinkWhileLoading(size(), target);
    if (m_format == Format::jpeg)
        options->set("shrink", jpegShrink(shrink));
    else if (m_format == Format::webp && shrink > 1)
        options->set("scale", 1 / shrink);
    return open(options);
}

} // namespace orvane
