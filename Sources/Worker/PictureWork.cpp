#include "Worker/PictureWork.h"

#include "Worker/PictureFile.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>

#include <sys/stat.h>
#include <unistd.h>

namespace orvane::PictureWork {

using vips::VImage;
using vips::VTarget;
using namespace WorkerProtocol;

namespace {

/// A format without a choice of its own is written as well as a person can see.
constexpr int heicQuality = 80;

VImage resampled(const VImage& image, PictureSize target)
{
    const bool hasSize = static_cast<std::uint32_t>(image.width()) == target.width &&
                         static_cast<std::uint32_t>(image.height()) == target.height;
    if (hasSize && image.interpretation() == VIPS_INTERPRETATION_sRGB && image.format() == VIPS_FORMAT_UCHAR)
        return image; // to the pixel, also where it is translucent
    return image.thumbnail_image(static_cast<int>(target.width),
                                 VImage::option()
                                     ->set("height", static_cast<int>(target.height))
                                     ->set("size", VIPS_SIZE_FORCE)
                                     ->set("no_rotate", true));
}

/// Converts from the picture's own profile, or from the library's where it has none.
VImage inSrgb(const VImage& image)
{
    return image.icc_transform("srgb", VImage::option()
                                           ->set("embedded", true)
                                           ->set("input_profile", "cmyk")
                                           ->set("intent", VIPS_INTENT_RELATIVE));
}

bool isCmyk(const VImage& image)
{
    return image.interpretation() == VIPS_INTERPRETATION_CMYK;
}

/// The small picture is converted and not the large one, but for inks, which can't be mixed like light.
VImage resampledInSrgb(const VImage& image, PictureSize target)
{
    if (isCmyk(image))
        return resampled(inSrgb(image), target);
    const VImage small = resampled(image, target);
    return image.get_typeof(VIPS_META_ICC_NAME) != 0 ? inSrgb(small) : small;
}

VImage resampledInSrgb(const PictureFile& file, PictureSize target)
{
    try {
        return resampledInSrgb(file.load(target), target);
    } catch (const vips::VError&) {
        // A profile that can't be used is as good as none.
        ::vips_error_clear();
        VImage plain = file.load(target).copy();
        plain.remove(VIPS_META_ICC_NAME);
        return resampledInSrgb(plain, target);
    }
}

/// Returns red, green and blue with eight bits each, and perhaps alpha.
VImage redrawn(const PictureFile& file, PictureSize target)
{
    VImage image = resampledInSrgb(file, target);
    if (image.interpretation() != VIPS_INTERPRETATION_sRGB)
        image = image.colourspace(VIPS_INTERPRETATION_sRGB);
    if (image.format() != VIPS_FORMAT_UCHAR)
        image = image.cast(VIPS_FORMAT_UCHAR);
    if (image.bands() > 4)
        image = image.extract_band(0, VImage::option()->set("n", 4));
    if (image.bands() < 3)
        throw std::runtime_error("the picture's channels aren't known");
    return image;
}

void write(const VImage& image, const VTarget& target, const Resize& order)
{
    vips::VOption* options = VImage::option()->set("strip", true);
    switch (order.type) {
    case PictureType::jpeg: {
        const VImage opaque =
            image.has_alpha()
                ? image.flatten(VImage::option()->set("background", std::vector<double>{255, 255, 255}))
                : image;
        opaque.jpegsave_target(target, options->set("Q", static_cast<int>(order.quality)));
        return;
    }
    case PictureType::png:
        image.pngsave_target(target, options);
        return;
    case PictureType::heic:
        image.heifsave_target(
            target, options->set("compression", VIPS_FOREIGN_HEIF_COMPRESSION_HEVC)->set("Q", heicQuality));
        return;
    case PictureType::tiff:
        image.tiffsave_target(target, options->set("compression", VIPS_FOREIGN_TIFF_COMPRESSION_LZW)
                                          ->set("predictor", VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL));
        return;
    }
    delete options;
    throw std::runtime_error("the type of the new picture isn't known");
}

bool isKnown(PictureType type)
{
    return type == PictureType::jpeg || type == PictureType::png || type == PictureType::heic ||
           type == PictureType::tiff;
}

PictureSize fitted(PictureSize size, PictureSize most)
{
    const double scale = std::min({1.0, double(most.width) / size.width, double(most.height) / size.height});
    const auto side = [scale](std::uint32_t length, std::uint32_t limit) {
        return std::clamp(static_cast<std::uint32_t>(std::lround(length * scale)), 1U, limit);
    };
    return {side(size.width, most.width), side(size.height, most.height)};
}

void writeAll(int descriptor, const std::byte* bytes, std::size_t count)
{
    std::size_t done = 0;
    while (done < count) {
        const ssize_t written = ::pwrite(descriptor, bytes + done, count - done, static_cast<off_t>(done));
        if (written <= 0)
            throw std::runtime_error("the pixels can't be written");
        done += static_cast<std::size_t>(written);
    }
}

PictureFile::Format formatOf(ForeignType type)
{
    switch (type) {
    case ForeignType::bmp:
        return PictureFile::Format::bmp;
    case ForeignType::jpeg:
        return PictureFile::Format::jpeg;
    case ForeignType::tiff:
        return PictureFile::Format::tiff;
    }
    throw std::runtime_error("the format isn't known");
}

std::uint64_t bytesIn(int target)
{
    struct stat written {};
    if (::fstat(target, &written) != 0 || written.st_size <= 0)
        throw std::runtime_error("nothing was written");
    return static_cast<std::uint64_t>(written.st_size);
}

PictureSize writePixels(const PictureFile& file, int target, PictureSize most)
{
    if (!isAllowed(most))
        throw std::runtime_error("the order can't be carried out");
    const PictureSize size = fitted(file.size(), most);
    VImage image = redrawn(file, size);
    image = image.has_alpha() ? image.premultiply().cast(VIPS_FORMAT_UCHAR) : image.bandjoin_const({255});
    std::size_t count = 0;
    const std::unique_ptr<void, decltype(&g_free)> bytes(image.write_to_memory(&count), &g_free);
    if (count != std::size_t{size.width} * size.height * 4)
        throw std::runtime_error("the picture has another size");
    writeAll(target, static_cast<const std::byte*>(bytes.get()), count);
    return size;
}

} // namespace

PictureSize measure(int source)
{
    return PictureFile(source).size();
}

Written resize(int source, int target, const Resize& order)
{
    if (!isKnown(order.type) || !isAllowed(order.target) || order.quality < 1 || order.quality > 100)
        throw std::runtime_error("the order can't be carried out");
    const PictureFile file(source);
    if (file.size() != order.source)
        throw std::runtime_error("the picture has changed");
    write(redrawn(file, order.target), VTarget::new_to_descriptor(target), order);
    return {bytesIn(target)};
}

PictureSize writePixels(int source, int target, const Pixels& order)
{
    return writePixels(PictureFile(source), target, order.most);
}

PictureSize writeCachedPixels(int source, int target, const CachedPixels& order)
{
    const PictureFile file(source);
    if (file.text("Thumb::MTime") != std::to_string(order.modified))
        throw std::runtime_error("the entry is of another state of the file");
    return writePixels(file, target, order.most);
}

Written convert(int source, int target, const Conversion& order)
{
    const PictureFile file(source);
    const PictureSize size = file.size();
    if (file.format() != formatOf(order.from) || std::uint64_t{size.width} * size.height > largestConversion)
        throw std::runtime_error("the picture can't be converted");
    Resize asPng;
    asPng.type = PictureType::png;
    write(redrawn(file, size), VTarget::new_to_descriptor(target), asPng);
    return {bytesIn(target)};
}

} // namespace orvane::PictureWork
