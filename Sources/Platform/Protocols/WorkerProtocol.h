// The messages between the program and its worker, the process that opens files which other people made.
//
// A message is one packet of a socket pair: a header, and a payload that depends on the kind. Descriptors go
// beside it. Each request gets one answer with the same kind and number. Both sides treat what they read as
// if an enemy had written it. A new request is a new kind with its own payloads; the frame stays.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

namespace orvane::WorkerProtocol {

inline constexpr std::uint32_t magic = 0x4B57524F;
/// To be raised when a payload changes; a kind that is added leaves it.
inline constexpr std::uint16_t version = 1;
inline constexpr std::size_t longestMessage = 4096;
inline constexpr std::size_t mostLanguages = 4;
/// A memory file and a model for each language.
inline constexpr std::size_t mostDescriptors = 1 + mostLanguages;
/// The worker's end of the socket pair, in the worker.
inline constexpr int workerDescriptor = 3;
/// A side of a picture, and a picture's area, beyond which it isn't opened.
inline constexpr std::uint32_t longestSide = 1'000'000;
inline constexpr std::uint64_t largestArea = 256'000'000;
/// The area of a picture that is converted in its full size.
inline constexpr std::uint64_t largestConversion = std::uint64_t{128} * 1024 * 1024;

enum class Kind : std::uint16_t {
    /// A file to read from; the answer is a PictureSize.
    measure = 1,
    /// A file to read from and an empty one to write to; Resize, and Written as the answer.
    resize = 2,
    /// A file to read from and a memory file; Pixels, and the PictureSize of what was written as the answer:
    /// rows without gaps, each pixel four bytes, red, green, blue and alpha, premultiplied.
    pixels = 3,
    /// The same for a file of the desktop's thumbnail cache: CachedPixels, and PictureSize as the answer.
    cachedPixels = 4,
    /// The models of the languages; Languages, and an empty answer once they are loaded.
    prepareText = 5,
    /// A memory file and the models; ReadText, and Written as the answer. The file begins with the pixels,
    /// rows
    /// without gaps and each pixel a number 0xXXRRGGBB in the machine's byte order, and then with the text in
    /// UTF-8: a line feed ends each line. A text that is longer than the file fails.
    readText = 6,
    /// A file to read from and an empty one to write to; Conversion, and Written as the answer: the picture
    /// in its full size as PNG.
    conversion = 7,
};

enum class Status : std::uint16_t {
    /// Every request has this one.
    done = 0,
    /// The request is malformed or of an unknown kind.
    refused = 1,
    /// The file can't be read, or the result can't be written.
    failed = 2,
};

enum class PictureType : std::uint32_t { jpeg = 0, png = 1, heic = 2, tiff = 3 };

struct Header {
    std::uint32_t magic = WorkerProtocol::magic;
    std::uint16_t version = WorkerProtocol::version;
    Kind kind{};
    std::uint32_t number = 0;
    Status status = Status::done;
    std::uint16_t length = 0;
};

struct PictureSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    friend bool operator==(const PictureSize&, const PictureSize&) = default;
};

/// `source` is the size that was measured; a file that has another one now fails.
struct Resize {
    PictureSize source;
    PictureSize target;
    PictureType type{};
    /// From 1 to 100; used for JPEG alone.
    std::uint32_t quality = 0;
};

struct Written {
    std::uint64_t bytes = 0;
};

/// The picture is fitted into `most`, never enlarged.
struct Pixels {
    PictureSize most;
};

/// Fails unless the entry was made for a file with this modification time, in seconds.
struct CachedPixels {
    PictureSize most;
    std::uint64_t modified = 0;
};

enum class ForeignType : std::uint32_t { bmp = 0, jpeg = 1, tiff = 2 };

/// Fails when the file has another format.
struct Conversion {
    ForeignType from{};
};

/// The names of one to `mostLanguages` languages in the order of their models, the first before the others
/// where a word can be read in several. Names are joined by '+'; zeros follow.
struct Languages {
    std::array<char, 64> names{};
};

struct ReadText {
    PictureSize size;
    Languages languages;
};

/// The area of a picture beyond which its text isn't read.
inline constexpr std::uint64_t largestTextArea = 64'000'000;

static_assert(sizeof(Header) == 16 && sizeof(Resize) == 24);

[[nodiscard]] constexpr bool isAllowed(PictureSize size)
{
    return size.width >= 1 && size.height >= 1 && size.width <= longestSide && size.height <= longestSide &&
           std::uint64_t{size.width} * size.height <= largestArea;
}

template <typename Payload>
[[nodiscard]] std::vector<std::byte> bytesOf(const Payload& payload)
{
    static_assert(std::is_trivially_copyable_v<Payload> && std::has_unique_object_representations_v<Payload>);
    const auto bytes = std::as_bytes(std::span(&payload, 1));
    return {bytes.begin(), bytes.end()};
}

/// Nothing unless the payload has the length of its kind.
template <typename Payload>
[[nodiscard]] std::optional<Payload> payloadAs(std::span<const std::byte> bytes)
{
    static_assert(std::is_trivially_copyable_v<Payload>);
    if (bytes.size() != sizeof(Payload))
        return std::nullopt;
    Payload payload;
    std::memcpy(&payload, bytes.data(), sizeof payload);
    return payload;
}

/// The header gets the payload's length, which has to fit into a message.
[[nodiscard]] inline std::vector<std::byte> encode(Header header, std::span<const std::byte> payload)
{
    header.length = static_cast<std::uint16_t>(payload.size());
    std::vector<std::byte> message = bytesOf(header);
    message.insert(message.end(), payload.begin(), payload.end());
    return message;
}

/// The payload is a part of the bytes that were decoded.
struct Message {
    Header header;
    std::span<const std::byte> payload;
};

/// Nothing when the bytes are no whole message of this version. The kind may be an unknown one.
[[nodiscard]] inline std::optional<Message> decode(std::span<const std::byte> bytes)
{
    if (bytes.size() < sizeof(Header) || bytes.size() > longestMessage)
        return std::nullopt;
    const auto header = payloadAs<Header>(bytes.first(sizeof(Header)));
    const auto payload = bytes.subspan(sizeof(Header));
    if (header->magic != magic || header->version != version || header->length != payload.size())
        return std::nullopt;
    return Message{*header, payload};
}

} // namespace orvane::WorkerProtocol
