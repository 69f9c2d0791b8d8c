#include "Worker/RequestHandler.h"

#include "Worker/PictureWork.h"
#include "Worker/TextWork.h"

#include <exception>

#include <vips/vips.h>

namespace orvane::RequestHandler {

using namespace WorkerProtocol;

namespace {

using Bytes = std::vector<std::byte>;
using Descriptors = std::span<const int>;

/// Nothing when the request doesn't have what its kind needs.
std::optional<Bytes> carryOut(const Message& request, Descriptors descriptors)
{
    const bool hasOne = descriptors.size() == 1;
    const bool hasTwo = descriptors.size() == 2;
    switch (request.header.kind) {
    case Kind::measure:
        if (hasOne && request.payload.empty())
            return bytesOf(PictureWork::measure(descriptors[0]));
        return std::nullopt;
    case Kind::resize:
        if (const auto order = payloadAs<Resize>(request.payload); order && hasTwo)
            return bytesOf(PictureWork::resize(descriptors[0], descriptors[1], *order));
        return std::nullopt;
    case Kind::pixels:
        if (const auto order = payloadAs<Pixels>(request.payload); order && hasTwo)
            return bytesOf(PictureWork::writePixels(descriptors[0], descriptors[1], *order));
        return std::nullopt;
    case Kind::prepareText:
        if (const auto languages = payloadAs<Languages>(request.payload)) {
            TextWork::prepare(descriptors, *languages);
            return Bytes();
        }
        return std::nullopt;
    case Kind::readText:
        if (const auto order = payloadAs<ReadText>(request.payload); order && !descriptors.empty())
            return bytesOf(TextWork::read(descriptors[0], descriptors.subspan(1), *order));
        return std::nullopt;
    case Kind::cachedPixels:
        if (const auto order = payloadAs<CachedPixels>(request.payload); order && hasTwo)
            return bytesOf(PictureWork::writeCachedPixels(descriptors[0], descriptors[1], *order));
        return std::nullopt;
    case Kind::conversion:
        if (const auto order = payloadAs<Conversion>(request.payload); order && hasTwo)
            return bytesOf(PictureWork::convert(descriptors[0], descriptors[1], *order));
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::vector<std::byte> answer(std::span<const std::byte> request, std::span<const int> descriptors)
{
    const auto message = decode(request);
    if (!message)
        return encode({.status = Status::refused}, {});
    Header header{.kind = message->header.kind, .number = message->header.number};
    try {
        if (const auto payload = carryOut(*message, descriptors))
            return encode(header, *payload);
        header.status = Status::refused;
    } catch (const std::exception&) {
        ::vips_error_clear();
        header.status = Status::failed;
    }
    return encode(header, {});
}

} // namespace orvane::RequestHandler
