#include "Worker/TextPicture.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <vector>

#include <leptonica/allheaders.h>
#include <unistd.h>

namespace orvane {

using namespace WorkerProtocol;

namespace {

constexpr std::size_t bytesInPixel = 4;
/// A side beyond which the library takes no picture.
constexpr std::uint32_t longestReadSide = 32'767;

void readRow(int file, std::vector<std::uint8_t>& row, std::size_t index)
{
    std::size_t done = 0;
    while (done < row.size()) {
        const ssize_t got = ::pread(file, row.data() + done, row.size() - done,
                                    static_cast<off_t>(index * row.size() + done));
        if (got <= 0)
            throw std::runtime_error("the pixels can't be read");
        done += static_cast<std::size_t>(got);
    }
}

std::uint8_t greyOf(const std::uint8_t* bytes)
{
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, bytes, sizeof pixel);
    // The eye's share of each colour, in 256 parts.
    return static_cast<std::uint8_t>(
        (77 * (pixel >> 16 & 0xFF) + 150 * (pixel >> 8 & 0xFF) + 29 * (pixel & 0xFF)) / 256);
}

using Histogram = std::array<std::uint64_t, 256>;

/// There is more ground than text, so that the middle one of all pixels is ground.
bool isLightOnDark(const Histogram& histogram, std::uint64_t area)
{
    std::uint64_t dark = 0;
    for (std::size_t grey = 0; grey < histogram.size() / 2; ++grey)
        dark += histogram[grey];
    return dark > area / 2;
}

} // namespace

void TextPictureEnd::operator()(Pix* picture) const
{
    ::pixDestroy(&picture);
}

TextPicture readTextPicture(int file, PictureSize size)
{
    if (!isAllowed(size) || std::uint64_t{size.width} * size.height > largestTextArea ||
        size.width > longestReadSide || size.height > longestReadSide)
        throw std::runtime_error("the picture's size isn't allowed");
    TextPicture grey(::pixCreate(static_cast<int>(size.width), static_cast<int>(size.height), 8));
    if (!grey)
        throw std::runtime_error("there is no memory for the picture");
    Histogram histogram{};
    std::vector<std::uint8_t> row(size.width * bytesInPixel);
    for (std::uint32_t y = 0; y < size.height; ++y) {
        readRow(file, row, y);
        l_uint32* const line =
            ::pixGetData(grey.get()) + std::size_t{y} * static_cast<std::size_t>(::pixGetWpl(grey.get()));
        for (std::uint32_t x = 0; x < size.width; ++x) {
            const std::uint8_t value = greyOf(row.data() + x * bytesInPixel);
            ++histogram[value];
            SET_DATA_BYTE(line, x, value);
        }
    }
    if (isLightOnDark(histogram, std::uint64_t{size.width} * size.height))
        ::pixInvert(grey.get(), grey.get());
    if (size.width > longestReadSide / 2 || size.height > longestReadSide / 2)
        return grey;
    TextPicture large(::pixScaleGray2xLI(grey.get()));
    if (!large)
        throw std::runtime_error("there is no memory for the picture");
    return large;
}

} // namespace orvane
