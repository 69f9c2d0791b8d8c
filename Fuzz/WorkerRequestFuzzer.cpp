// Whatever the worker is asked about whatever file, it answers, with the number of the request.
#include "Platform/Protocols/WorkerProtocol.h"
#include "Require.h"
#include "Worker/RequestHandler.h"

#include <array>

#include <sys/mman.h>
#include <unistd.h>
#include <vips/vips.h>

using namespace orvane;
using fuzz::require;
using namespace orvane::WorkerProtocol;

namespace {

class MemoryFile {
public:
    explicit MemoryFile(std::span<const std::byte> bytes) : m_descriptor(::memfd_create("fuzz", MFD_CLOEXEC))
    {
        [[maybe_unused]] const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
    }
    ~MemoryFile() { ::close(m_descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

/// Takes the beginning of the bytes away.
std::span<const std::byte> take(std::span<const std::byte>& bytes, std::size_t count)
{
    const auto taken = bytes.first(std::min(count, bytes.size()));
    bytes = bytes.subspan(taken.size());
    return taken;
}

/// Returns whether the library of the worker is ready for use.
bool begin()
{
    if (VIPS_INIT("fuzzer") != 0)
        return false;
    ::vips_cache_set_max(0);
    return true;
}

} // namespace

#ifndef ORVANE_FUZZ_SEEDS
/// The codecs keep some memory for good, which isn't what is looked for here.
extern "C" const char* __asan_default_options() // NOLINT(bugprone-reserved-identifier): the sanitizer's name
{
    return "detect_leaks=0";
}
#endif

/// Nor is this one in the tests, which look for leaks.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer's name
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:x265_malloc\n";
}

/// The first byte says what the rest is: a request by itself, or the payload of a good one and then the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool isReady = begin();
    require(isReady);
    auto bytes = std::as_bytes(std::span(data, size));
    if (bytes.empty())
        return 0;
    const auto choice = static_cast<std::uint8_t>(take(bytes, 1)[0]) % 7;
    Header header{.kind = static_cast<Kind>(choice), .number = 7};
    std::vector<std::byte> request;
    std::size_t descriptors = 2;
    if (choice == 0) {
        request.assign(bytes.begin(), bytes.end());
    } else if (header.kind == Kind::measure) {
        descriptors = 1;
        request = encode(header, {});
    } else if (header.kind == Kind::pixels) {
        request = encode(header, bytesOf(Pixels{{32, 32}}));
    } else if (header.kind == Kind::resize) {
        request = encode(header, take(bytes, sizeof(Resize)));
    } else if (choice == 5) {
        header.kind = Kind::cachedPixels;
        request = encode(header, bytesOf(CachedPixels{{32, 32}, 7}));
    } else if (choice == 6) {
        header.kind = Kind::conversion;
        request = encode(header, take(bytes, sizeof(Conversion)));
    } else {
        // The model is an empty file: models are the system's own, and not what is looked at here.
        header.kind = Kind::readText;
        request = encode(header, take(bytes, sizeof(ReadText)));
    }
    const MemoryFile source(bytes);
    const MemoryFile target({});
    const std::array both{source.get(), target.get()};
    const auto answer = RequestHandler::answer(request, std::span(both).first(descriptors));
    const auto message = decode(answer);
    require(message.has_value());
    require(choice == 0 || message->header.number == 7);
    require(message->header.status == Status::done || message->payload.empty());
    return 0;
}
