// Any bytes are either no answer to a request, or one with its kind and number whose payload has the length
// told.
#include "PlatformLinux/Worker/WorkerClient.h"
#include "Require.h"

using namespace orvane;
using fuzz::require;
using namespace orvane::WorkerProtocol;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const Header request{.kind = static_cast<Kind>(data[0] % 8), .number = 7};
    const auto bytes = std::as_bytes(std::span(data + 1, size - 1));
    if (const auto answer = WorkerClient::answerTo(request, bytes)) {
        require(answer->payload.size() + sizeof(Header) == bytes.size());
        require(answer->status == Status::done || answer->payload.empty());
        if (const auto told = payloadAs<PictureSize>(answer->payload); told && isAllowed(*told))
            require(std::uint64_t{told->width} * told->height <= largestArea);
    }
    return 0;
}
