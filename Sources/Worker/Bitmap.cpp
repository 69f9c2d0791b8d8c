#include "Worker/Bitmap.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace orvane::Bitmap {

namespace {

enum Compression : std::uint32_t { none = 0, runs8 = 1, runs4 = 2, bitFields = 3, alphaBitFields = 6 };

constexpr std::size_t fileHeaderSize = 14;
constexpr std::size_t coreHeaderSize = 12;
constexpr std::size_t infoHeaderSize = 40;
constexpr std::size_t commonArea = 1 << 20;
/// For run lengths with orders that do nothing.
constexpr std::size_t surplus = 1 << 16;
/// From this version of the header on, it has the masks itself.
constexpr std::size_t maskedHeaderSize = 56;

[[noreturn]] void damaged()
{
    throw std::runtime_error("the bitmap is damaged");
}

std::vector<std::uint8_t> readAt(int descriptor, std::uint64_t offset, std::size_t count)
{
    std::vector<std::uint8_t> bytes(count);
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got =
            ::pread(descriptor, bytes.data() + done, count - done, static_cast<off_t>(offset + done));
        if (got <= 0)
            damaged();
        done += static_cast<std::size_t>(got);
    }
    return bytes;
}

std::uint32_t number(const std::vector<std::uint8_t>& bytes, std::size_t offset, std::size_t count)
{
    if (offset + count > bytes.size())
        damaged();
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value |= std::uint32_t{bytes[offset + i]} << (8 * i);
    return value;
}

/// Takes one channel out of a pixel and brings it to eight bits.
class Channel {
public:
    Channel() = default;
    explicit Channel(std::uint32_t mask) : m_mask(mask), m_shift(mask ? std::countr_zero(mask) : 0) {}

    [[nodiscard]] bool isThere() const { return m_mask != 0; }
    [[nodiscard]] std::uint8_t of(std::uint32_t pixel) const
    {
        const std::uint64_t most = m_mask >> m_shift;
        const std::uint64_t value = (pixel & m_mask) >> m_shift;
        return most ? static_cast<std::uint8_t>((value * 255 + most / 2) / most) : std::uint8_t{0};
    }

private:
    std::uint32_t m_mask = 0;
    int m_shift = 0;
};

using Colour = std::array<std::uint8_t, 3>;

struct Description {
    WorkerProtocol::PictureSize size;
    bool isTopDown = false;
    std::uint32_t bits = 0;
    std::uint32_t compression = none;
    std::uint32_t dataOffset = 0;
    std::array<Channel, 4> channels;
    std::vector<Colour> palette;
};

void readMasks(Description& picture, int descriptor, const std::vector<std::uint8_t>& header)
{
    const bool isMasked = picture.compression == bitFields || picture.compression == alphaBitFields;
    std::array<std::uint32_t, 4> masks{};
    if (isMasked) {
        const bool hasAlpha = header.size() >= maskedHeaderSize || picture.compression == alphaBitFields;
        const auto stored = readAt(descriptor, fileHeaderSize + infoHeaderSize, hasAlpha ? 16 : 12);
        for (std::size_t i = 0; i * 4 < stored.size(); ++i)
            masks[i] = number(stored, i * 4, 4);
    } else if (picture.bits == 16) {
        masks = {0x7C00, 0x03E0, 0x001F, 0};
    } else {
        masks = {0xFF0000, 0x00FF00, 0x0000FF, picture.bits == 32 ? 0xFF000000U : 0};
    }
    std::ranges::transform(masks, picture.channels.begin(), [](std::uint32_t mask) { return Channel(mask); });
}

void readPalette(Description& picture, int descriptor, const std::vector<std::uint8_t>& header)
{
    const bool isCore = header.size() == coreHeaderSize;
    const std::size_t most = std::size_t{1} << picture.bits;
    const std::size_t told = isCore ? 0 : number(header, 32, 4);
    const std::size_t count = told == 0 ? most : std::min(told, most);
    const std::size_t entry = isCore ? 3 : 4;
    const auto bytes = readAt(descriptor, fileHeaderSize + header.size(), count * entry);
    for (std::size_t i = 0; i < count; ++i)
        picture.palette.push_back({bytes[i * entry + 2], bytes[i * entry + 1], bytes[i * entry]});
}

bool isKnown(const Description& picture)
{
    switch (picture.compression) {
    case none:
        return picture.bits == 1 || picture.bits == 4 || picture.bits == 8 || picture.bits == 16 ||
               picture.bits == 24 || picture.bits == 32;
    case runs8:
        return picture.bits == 8 && !picture.isTopDown;
    case runs4:
        return picture.bits == 4 && !picture.isTopDown;
    case bitFields:
    case alphaBitFields:
        return picture.bits == 16 || picture.bits == 32;
    default:
        return false;
    }
}

Description describe(int descriptor)
{
    const auto start = readAt(descriptor, 0, fileHeaderSize + 4);
    const std::size_t headerSize = number(start, fileHeaderSize, 4);
    if (headerSize != coreHeaderSize && (headerSize < infoHeaderSize || headerSize > 1024))
        damaged();
    const auto header = readAt(descriptor, fileHeaderSize, headerSize);
    Description picture;
    picture.dataOffset = number(start, 10, 4);
    if (headerSize == coreHeaderSize) {
        picture.size = {number(header, 4, 2), number(header, 6, 2)};
        picture.bits = number(header, 10, 2);
    } else {
        const auto height = std::bit_cast<std::int32_t>(number(header, 8, 4));
        if (height == std::numeric_limits<std::int32_t>::min())
            damaged();
        picture.isTopDown = height < 0;
        picture.size = {number(header, 4, 4), static_cast<std::uint32_t>(std::abs(height))};
        picture.bits = number(header, 14, 2);
        picture.compression = number(header, 16, 4);
    }
    if (!isKnown(picture) || !WorkerProtocol::isAllowed(picture.size))
        damaged();
    if (picture.bits <= 8)
        readPalette(picture, descriptor, header);
    else
        readMasks(picture, descriptor, header);
    return picture;
}

/// The rows of a picture as they are filled.
struct Canvas {
    Canvas(WorkerProtocol::PictureSize itsSize, std::size_t itsBands)
        : size(itsSize), bands(itsBands), bytes(std::size_t{itsSize.width} * itsSize.height * itsBands)
    {
    }
    std::uint8_t* at(std::size_t x, std::size_t y) { return bytes.data() + (y * size.width + x) * bands; }

    WorkerProtocol::PictureSize size;
    std::size_t bands;
    std::vector<std::uint8_t> bytes;
};

const Colour& colourOf(const Description& picture, std::size_t index)
{
    static constexpr Colour black{};
    return index < picture.palette.size() ? picture.palette[index] : black;
}

void fillRow(const Description& picture, const std::vector<std::uint8_t>& row, std::uint8_t* to,
             std::size_t bands)
{
    const std::size_t bits = picture.bits;
    for (std::size_t x = 0; x < picture.size.width; ++x, to += bands) {
        if (bits <= 8) {
            const std::size_t bit = x * bits;
            const std::size_t index = (row[bit / 8] >> (8 - bits - bit % 8)) & ((1U << bits) - 1);
            std::ranges::copy(colourOf(picture, index), to);
            continue;
        }
        std::uint32_t pixel = 0;
        for (std::size_t i = 0; i < bits / 8; ++i)
            pixel |= std::uint32_t{row[x * bits / 8 + i]} << (8 * i);
        for (std::size_t band = 0; band < bands; ++band)
            to[band] = picture.channels[band].of(pixel);
    }
}

std::size_t strideOf(const Description& picture)
{
    return (std::size_t{picture.size.width} * picture.bits + 31) / 32 * 4;
}

void fillRows(const Description& picture, int descriptor, Canvas& canvas)
{
    const std::size_t stride = strideOf(picture);
    for (std::size_t i = 0; i < picture.size.height; ++i) {
        const auto row = readAt(descriptor, picture.dataOffset + i * stride, stride);
        fillRow(picture, row, canvas.at(0, picture.isTopDown ? i : picture.size.height - 1 - i),
                canvas.bands);
    }
}

/// Reads run lengths: pairs of a count and a value, and after a zero an order.
class RunReader {
public:
    RunReader(const Description& picture, std::vector<std::uint8_t> data, Canvas& canvas)
        : m_picture(picture), m_data(std::move(data)), m_canvas(canvas)
    {
    }

    void read()
    {
        while (m_row < m_picture.size.height) {
            const std::uint8_t count = next();
            const std::uint8_t value = next();
            if (count > 0)
                repeat(count, value);
            else if (!obey(value))
                return;
        }
    }

private:
    enum Order : std::uint8_t { endOfLine = 0, endOfPicture = 1, move = 2 };

    std::uint8_t next()
    {
        if (m_position >= m_data.size())
            damaged();
        return m_data[m_position++];
    }

    void put(std::size_t index)
    {
        if (m_column >= m_picture.size.width || m_row >= m_picture.size.height)
            return;
        std::ranges::copy(colourOf(m_picture, index),
                          m_canvas.at(m_column, m_picture.size.height - 1 - m_row));
        ++m_column;
    }

    void repeat(std::size_t count, std::uint8_t value)
    {
        for (std::size_t i = 0; i < count; ++i)
            put(m_picture.bits == 8 ? value : i % 2 == 0 ? value >> 4 : value & 15);
    }

    void copy(std::size_t count)
    {
        std::uint8_t value = 0;
        const std::size_t start = m_position;
        for (std::size_t i = 0; i < count; ++i) {
            if (m_picture.bits == 8 || i % 2 == 0)
                value = next();
            put(m_picture.bits == 8 ? value : i % 2 == 0 ? value >> 4 : value & 15);
        }
        if ((m_position - start) % 2 != 0)
            next(); // such a run is filled up to a whole word
    }

    bool obey(std::uint8_t order)
    {
        switch (order) {
        case endOfLine:
            m_column = 0;
            ++m_row;
            return true;
        case endOfPicture:
            return false;
        case move:
            m_column += next();
            m_row += next();
            return true;
        default:
            copy(order);
            return true;
        }
    }

    const Description& m_picture;
    std::vector<std::uint8_t> m_data;
    Canvas& m_canvas;
    std::size_t m_position = 0;
    std::size_t m_column = 0;
    std::size_t m_row = 0;
};

bool isInRuns(const Description& picture)
{
    return picture.compression == runs8 || picture.compression == runs4;
}

/// Returns how many bytes from the start of the pixels on have to be read at most. Throws when the picture
/// can't be in them: a header alone must not be enough to have a large canvas made.
std::size_t checkedDataSize(const Description& picture, int descriptor)
{
    struct stat file {};
    if (::fstat(descriptor, &file) != 0 || file.st_size <= picture.dataOffset)
        damaged();
    const std::size_t size = static_cast<std::size_t>(file.st_size) - picture.dataOffset;
    const std::size_t height = picture.size.height;
    const std::size_t area = picture.size.width * height;
    if (!isInRuns(picture)) {
        if (size < strideOf(picture) * height)
            damaged();
        return size;
    }
    // A pair of bytes fills at most 255 pixels and at least one, and two bytes end a row. Pixels can also be
    // left out, which a picture of a common size may do as it likes.
    if (area > commonArea && area / 255 > size / 2)
        damaged();
    return std::min(size, 2 * area + 2 * height + surplus);
}

/// Many programs write 32 bits with an alpha of nothing but zeros, and mean an opaque picture.
bool isTransparentAlone(const Canvas& canvas)
{
    for (std::size_t i = 3; i < canvas.bytes.size(); i += 4) {
        if (canvas.bytes[i] != 0)
            return false;
    }
    return true;
}

} // namespace

WorkerProtocol::PictureSize size(int descriptor)
{
    return describe(descriptor).size;
}

vips::VImage load(int descriptor)
{
    const Description picture = describe(descriptor);
    const std::size_t dataSize = checkedDataSize(picture, descriptor);
    Canvas canvas(picture.size, picture.bits > 8 && picture.channels[3].isThere() ? 4 : 3);
    if (isInRuns(picture))
        RunReader(picture, readAt(descriptor, picture.dataOffset, dataSize), canvas).read();
    else
        fillRows(picture, descriptor, canvas);
    VipsImage* const copied = ::vips_image_new_from_memory_copy(
        canvas.bytes.data(), canvas.bytes.size(), static_cast<int>(picture.size.width),
        static_cast<int>(picture.size.height), static_cast<int>(canvas.bands), VIPS_FORMAT_UCHAR);
    if (!copied)
        throw vips::VError();
    const vips::VImage image =
        vips::VImage(copied).copy(vips::VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
    return canvas.bands == 4 && isTransparentAlone(canvas)
               ? image.extract_band(0, vips::VImage::option()->set("n", 3))
               : image;
}

} // namespace orvane::Bitmap
