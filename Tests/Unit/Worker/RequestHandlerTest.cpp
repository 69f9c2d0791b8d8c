#include "Worker/RequestHandler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

namespace orvane::tests {

using namespace WorkerProtocol;

namespace {

class MemoryFile {
public:
    explicit MemoryFile(const std::vector<std::uint8_t>& bytes = {})
        : m_descriptor(::memfd_create("test", MFD_CLOEXEC))
    {
        EXPECT_EQ(::write(m_descriptor, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    ~MemoryFile() { ::close(m_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    [[nodiscard]] int descriptor() const { return m_descriptor; }
    [[nodiscard]] std::vector<std::uint8_t> read(std::size_t count) const
    {
        std::vector<std::uint8_t> bytes(count);
        const ssize_t got = ::pread(m_descriptor, bytes.data(), count, 0);
        bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        return bytes;
    }

private:
    int m_descriptor;
};

/// Two by two: red and green above blue and white, 24 bits.
const std::vector<std::uint8_t> bitmap{'B', 'M', 70, 0,   0,   0,   0, 0, 0, 0, 54,  0, 0,   0, 40, 0, 0,  0,
                                       2,   0,   0,  0,   2,   0,   0, 0, 1, 0, 24,  0, 0,   0, 0,  0, 16, 0,
                                       0,   0,   0,  0,   0,   0,   0, 0, 0, 0, 0,   0, 0,   0, 0,  0, 0,  0,
                                       255, 0,   0,  255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0,  0};

Message answered(const std::vector<std::byte>& bytes)
{
    const auto message = decode(bytes);
    EXPECT_TRUE(message);
    return message.value_or(Message{});
}

Status statusOf(const std::vector<std::byte>& request, std::span<const int> descriptors)
{
    const auto bytes = RequestHandler::answer(request, descriptors);
    return answered(bytes).header.status;
}

/// A bitmap that claims a size and has the eight bytes after its header alone.
std::vector<std::uint8_t> bitmapThatClaims(std::uint16_t side, std::uint8_t bits, std::uint8_t compression)
{
    std::vector<std::uint8_t> bytes = bitmap;
    for (const std::size_t place : {18U, 22U}) {
        bytes[place] = static_cast<std::uint8_t>(side);
        bytes[place + 1] = static_cast<std::uint8_t>(side >> 8);
    }
    bytes[28] = bits;
    bytes[30] = compression;
    bytes[46] = 1; // colours, of those that have a palette
    return bytes;
}

Status statusOfResize(const std::vector<std::uint8_t>& source, PictureSize size)
{
    const MemoryFile file(source);
    const MemoryFile target;
    return statusOf(encode({.kind = Kind::resize}, bytesOf(Resize{size, {1, 1}, PictureType::png, 85})),
                    std::array{file.descriptor(), target.descriptor()});
}

/// The most memory that this process has had, in KiB.
long peakMemory()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

TEST(RequestHandlerTest, MeasuresAPictureAndRepeatsTheNumber)
{
    const MemoryFile file(bitmap);
    const auto bytes = RequestHandler::answer(encode({.kind = Kind::measure, .number = 7}, {}),
                                              std::array{file.descriptor()});
    const Message answer = answered(bytes);
    EXPECT_EQ(answer.header.status, Status::done);
    EXPECT_EQ(answer.header.number, 7U);
    EXPECT_EQ(answer.header.kind, Kind::measure);
    EXPECT_EQ(payloadAs<PictureSize>(answer.payload), (PictureSize{2, 2}));
}

TEST(RequestHandlerTest, RefusesWhatIsNoRequest)
{
    const MemoryFile file(bitmap);
    const std::array one{file.descriptor()};
    const auto good = encode({.kind = Kind::measure}, {});
    ASSERT_EQ(statusOf(good, one), Status::done);

    EXPECT_EQ(statusOf({}, one), Status::refused);
    EXPECT_EQ(statusOf({good.begin(), good.end() - 1}, one), Status::refused);
    EXPECT_EQ(statusOf(encode({.magic = 1, .kind = Kind::measure}, {}), one), Status::refused);
    EXPECT_EQ(statusOf(encode({.version = version + 1, .kind = Kind::measure}, {}), one), Status::refused);
    EXPECT_EQ(statusOf(encode({.kind = Kind{99}}, {}), one), Status::refused);
    EXPECT_EQ(statusOf(good, {}), Status::refused);
    EXPECT_EQ(statusOf(good, std::array{file.descriptor(), file.descriptor()}), Status::refused);
    EXPECT_EQ(statusOf(encode({.kind = Kind::measure}, std::array<std::byte, 1>{}), one), Status::refused);
    EXPECT_EQ(statusOf(encode({.kind = Kind::resize}, std::array<std::byte, 23>{}), one), Status::refused);
    auto longer = good;
    longer.push_back({});
    EXPECT_EQ(statusOf(longer, one), Status::refused);
    longer.resize(longestMessage + 1);
    EXPECT_EQ(statusOf(longer, one), Status::refused);
}

TEST(RequestHandlerTest, FailsForOrdersThatCannotBe)
{
    const MemoryFile file(bitmap);
    const auto status = [&file](Resize order) {
        const MemoryFile target;
        return statusOf(encode({.kind = Kind::resize}, bytesOf(order)),
                        std::array{file.descriptor(), target.descriptor()});
    };
    const Resize good{{2, 2}, {1, 1}, PictureType::png, 85};
    EXPECT_EQ(status(good), Status::done);
    EXPECT_EQ(status({{2, 3}, {1, 1}, PictureType::png, 85}), Status::failed);
    EXPECT_EQ(status({{2, 2}, {0, 1}, PictureType::png, 85}), Status::failed);
    EXPECT_EQ(status({{2, 2}, {longestSide + 1, 1}, PictureType::png, 85}), Status::failed);
    EXPECT_EQ(status({{2, 2}, {100'000, 100'000}, PictureType::png, 85}), Status::failed);
    EXPECT_EQ(status({{2, 2}, {1, 1}, PictureType{4}, 85}), Status::failed);
    EXPECT_EQ(status({{2, 2}, {1, 1}, PictureType::jpeg, 0}), Status::failed);
    EXPECT_EQ(status({{2, 2}, {1, 1}, PictureType::jpeg, 101}), Status::failed);
    EXPECT_EQ(statusOf(encode({.kind = Kind::resize}, bytesOf(good)), std::array{file.descriptor(), -1}),
              Status::failed);
    EXPECT_EQ(statusOf(encode({.kind = Kind::measure}, {}), std::array{-1}), Status::failed);
}

TEST(RequestHandlerTest, ABitmapWithoutItsPixelsGetsNoMemory)
{
    constexpr std::uint16_t side = 12'000; // a canvas of 412 MiB
    ASSERT_EQ(statusOfResize(bitmap, {2, 2}), Status::done);
    const long before = peakMemory();
    EXPECT_EQ(statusOfResize(bitmapThatClaims(side, 24, 0), {side, side}), Status::failed);
    EXPECT_EQ(statusOfResize(bitmapThatClaims(side, 8, 0), {side, side}), Status::failed);
    EXPECT_EQ(statusOfResize(bitmapThatClaims(side, 8, 1), {side, side}), Status::failed);
    EXPECT_EQ(statusOfResize(bitmapThatClaims(side, 4, 2), {side, side}), Status::failed);
    EXPECT_LT(peakMemory() - before, 100 * 1024);
}

TEST(RequestHandlerTest, RunLengthsMayLeavePixelsOut)
{
    auto bytes = bitmapThatClaims(100, 8, 1);
    bytes[10] = 58; // after a palette of one colour
    bytes.resize(58);
    bytes.insert(bytes.end(), {5, 0, 0, 2, 9, 9, 3, 0, 0, 1});
    EXPECT_EQ(statusOfResize(bytes, {100, 100}), Status::done);
    bytes.resize(bytes.size() + (1 << 20)); // what follows the end doesn't count
    EXPECT_EQ(statusOfResize(bytes, {100, 100}), Status::done);
}

TEST(RequestHandlerTest, WritesPixelsFromTheTopPremultiplied)
{
    const MemoryFile file(bitmap);
    const MemoryFile target;
    const auto bytes = RequestHandler::answer(encode({.kind = Kind::pixels}, bytesOf(Pixels{{10, 10}})),
                                              std::array{file.descriptor(), target.descriptor()});
    EXPECT_EQ(payloadAs<PictureSize>(answered(bytes).payload), (PictureSize{2, 2})); // never enlarged
    const std::vector<std::uint8_t> expected{255, 0, 0,   255, 0,   255, 0,   255,
                                             0,   0, 255, 255, 255, 255, 255, 255};
    EXPECT_EQ(target.read(100), expected);
}

TEST(RequestHandlerTest, FailsForTextOrdersThatCannotBe)
{
    const MemoryFile memory(std::vector<std::uint8_t>(4 * 4 * 4));
    const MemoryFile model({1, 2, 3});
    const auto languages = [](std::string_view names) {
        Languages payload;
        std::ranges::copy(names, payload.names.begin());
        return payload;
    };
    const auto prepare = [&](const Languages& names, std::span<const int> models) {
        return statusOf(encode({.kind = Kind::prepareText}, bytesOf(names)), models);
    };
    const std::array one{model.descriptor()};
    EXPECT_EQ(prepare(languages("eng"), one), Status::failed); // no model is in that file
    EXPECT_EQ(prepare(languages("eng"), {}), Status::failed);
    EXPECT_EQ(prepare(languages("eng+deu"), one), Status::failed);
    EXPECT_EQ(prepare(languages(""), one), Status::failed);
    EXPECT_EQ(prepare(languages("../eng"), one), Status::failed);
    EXPECT_EQ(prepare(languages("eng+"), std::array{model.descriptor(), model.descriptor()}), Status::failed);
    Languages endless;
    endless.names.fill('a');
    EXPECT_EQ(prepare(endless, one), Status::failed);
    Languages withMore = languages("eng");
    withMore.names.back() = 'a';
    EXPECT_EQ(prepare(withMore, one), Status::failed);

    EXPECT_EQ(statusOf(encode({.kind = Kind::prepareText}, std::array<std::byte, 3>{}), one),
              Status::refused);
    EXPECT_EQ(statusOf(encode({.kind = Kind::readText}, bytesOf(ReadText{{4, 4}, languages("eng")})), {}),
              Status::refused);
    EXPECT_EQ(statusOf(encode({.kind = Kind::readText}, bytesOf(ReadText{{4, 4}, languages("eng")})),
                       std::array{memory.descriptor(), model.descriptor()}),
              Status::failed);
}

TEST(RequestHandlerTest, ConvertsWhatHasTheFormatThatIsNamed)
{
    const MemoryFile file(bitmap);
    const auto convert = [&file](ForeignType from, const MemoryFile& target) {
        const auto bytes =
            RequestHandler::answer(encode({.kind = Kind::conversion}, bytesOf(Conversion{from})),
                                   std::array{file.descriptor(), target.descriptor()});
        const Message answer = answered(bytes);
        const auto written = payloadAs<Written>(answer.payload);
        return std::pair(answer.header.status, written ? written->bytes : 0);
    };
    const MemoryFile png;
    const auto [status, bytes] = convert(ForeignType::bmp, png);
    EXPECT_EQ(status, Status::done);
    const auto written = png.read(1000);
    EXPECT_EQ(written.size(), bytes);
    EXPECT_EQ((std::vector(written.begin(), written.begin() + 4)),
              (std::vector<std::uint8_t>{0x89, 'P', 'N', 'G'}));
    const MemoryFile none;
    for (const auto from : {ForeignType::jpeg, ForeignType::tiff, ForeignType{3}})
        EXPECT_EQ(convert(from, none).first, Status::failed);
    EXPECT_TRUE(none.read(1).empty());
    EXPECT_EQ(
        statusOf(encode({.kind = Kind::conversion}, {}), std::array{file.descriptor(), none.descriptor()}),
        Status::refused);
}

TEST(RequestHandlerTest, AFileThatIsNoEntryOfTheCacheHasNoPixels)
{
    const MemoryFile file(bitmap);
    const MemoryFile target;
    const std::array both{file.descriptor(), target.descriptor()};
    EXPECT_EQ(statusOf(encode({.kind = Kind::cachedPixels}, bytesOf(CachedPixels{{10, 10}, 7})), both),
              Status::failed);
    EXPECT_EQ(statusOf(encode({.kind = Kind::cachedPixels}, bytesOf(Pixels{{10, 10}})), both),
              Status::refused);
    EXPECT_TRUE(target.read(1).empty());
}

} // namespace orvane::tests
