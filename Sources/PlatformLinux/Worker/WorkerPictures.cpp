#include "PlatformLinux/Worker/WorkerPictures.h"

#include "PlatformLinux/Common/HelperProgram.h"
#include "PlatformLinux/Worker/NewFile.h"
#include "PlatformLinux/Worker/PixelMemory.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

namespace orvane {

using namespace WorkerProtocol;

namespace {

/// Of a thumbnail's pixels; more than any screen needs.
constexpr std::uint64_t mostPixels = std::uint64_t{4096} * 4096;
/// While a picture is converted, somebody waits to paste it.
constexpr std::chrono::milliseconds longestConversion{10'000};
/// Of a converted picture: what its pixels take without compression, and some room.
constexpr std::uint64_t largestPng = largestConversion * 4 + (1 << 20);
const QByteArray pngSignature = QByteArrayLiteral("\x89PNG\r\n\x1A\n");

/// Nothing but a plain file is handed over: to open another kind could wait for ever, and to read it too.
FileDescriptor openPlainFile(const QString& path)
{
    FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    return file;
}

PictureSize asTold(Pictures::Size size)
{
    return {static_cast<std::uint32_t>(std::max(size.width, 0)),
            static_cast<std::uint32_t>(std::max(size.height, 0))};
}

PictureType asTold(Pictures::Type type)
{
    switch (type) {
    case Pictures::Type::jpeg:
        return PictureType::jpeg;
    case Pictures::Type::png:
        return PictureType::png;
    case Pictures::Type::heic:
        return PictureType::heic;
    case Pictures::Type::tiff:
        return PictureType::tiff;
    }
    return PictureType::jpeg;
}

ForeignType asTold(Pictures::Foreign format)
{
    switch (format) {
    case Pictures::Foreign::bmp:
        return ForeignType::bmp;
    case Pictures::Foreign::jpeg:
        return ForeignType::jpeg;
    case Pictures::Foreign::tiff:
        return ForeignType::tiff;
    }
    return ForeignType::bmp;
}

/// Nothing when the worker says what can't be true.
std::optional<PictureSize> sizeOf(const std::optional<WorkerClient::Bytes>& answer)
{
    const auto size = answer ? payloadAs<PictureSize>(*answer) : std::nullopt;
    return size && isAllowed(*size) ? size : std::nullopt;
}

} // namespace

WorkerPictures::WorkerPictures(LogSink& log, std::chrono::milliseconds limit)
    : m_client([] { return helperProgram("orvane-worker"); }, log, limit),
      m_converting([] { return helperProgram("orvane-worker"); }, log, std::min(limit, longestConversion))
{
}

WorkerPictures::WorkerPictures(QByteArray program, LogSink& log, std::chrono::milliseconds limit)
    : m_client([program] { return program; }, log, limit),
      m_converting([program] { return program; }, log, std::min(limit, longestConversion))
{
}

std::optional<Pictures::Size> WorkerPictures::measure(const QString& path, std::stop_token stop)
{
    const FileDescriptor file = openPlainFile(path);
    if (!file)
        return std::nullopt;
    const auto size = sizeOf(m_client.ask(Kind::measure, {}, std::array{file.get()}, stop));
    if (!size)
        return std::nullopt;
    return Size{static_cast<int>(size->width), static_cast<int>(size->height)};
}

std::optional<QString> WorkerPictures::writeCopy(const Copy& copy, std::stop_token stop)
{
    const FileDescriptor source = openPlainFile(copy.source);
    auto target = source ? NewFile::in(QFileInfo(copy.candidate(0)).path()) : std::nullopt;
    if (!target)
        return std::nullopt;
    const Resize order{.source = asTold(copy.sourceSize),
                       .target = asTold(copy.size),
                       .type = asTold(copy.type),
                       .quality =
                           static_cast<std::uint32_t>(std::clamp(std::lround(copy.quality * 100), 1L, 100L))};
    const auto answer =
        m_client.ask(Kind::resize, bytesOf(order), std::array{source.get(), target->descriptor()}, stop);
    const auto written = answer ? payloadAs<Written>(*answer) : std::nullopt;
    struct stat file {};
    if (!written || ::fstat(target->descriptor(), &file) != 0 || file.st_size <= 0 ||
        static_cast<std::uint64_t>(file.st_size) != written->bytes)
        return std::nullopt;
    return target->publish(copy.candidate);
}

std::optional<Pictures::Pixels> WorkerPictures::thumbnail(const QString& path, Size most,
                                                          std::stop_token stop)
{
    const PictureSize limit = asTold(most);
    return askForPixels(Kind::pixels, bytesOf(WorkerProtocol::Pixels{limit}), path, limit, stop);
}

std::optional<Pictures::Pixels> WorkerPictures::cachedThumbnail(const QString& entry, std::uint64_t modified,
                                                                Size most, const std::stop_token& stop)
{
    const PictureSize limit = asTold(most);
    return askForPixels(Kind::cachedPixels, bytesOf(CachedPixels{limit, modified}), entry, limit, stop);
}

std::optional<Pictures::Pixels> WorkerPictures::askForPixels(Kind kind, std::span<const std::byte> order,
                                                             const QString& path, PictureSize most,
                                                             const std::stop_token& stop)
{
    const std::uint64_t pixels = std::uint64_t{most.width} * most.height;
    if (!isAllowed(most) || pixels > mostPixels)
        return std::nullopt;
    const FileDescriptor file = openPlainFile(path);
    const FileDescriptor memory = file ? PixelMemory::make(pixels * 4) : FileDescriptor();
    if (!memory)
        return std::nullopt;
    const auto size = sizeOf(m_client.ask(kind, order, std::array{file.get(), memory.get()}, stop));
    if (!size || size->width > most.width || size->height > most.height)
        return std::nullopt;
    auto bytes = PixelMemory::read(memory.get(), qsizetype{size->width} * size->height * 4);
    if (!bytes)
        return std::nullopt;
    return Pixels{{static_cast<int>(size->width), static_cast<int>(size->height)}, *std::move(bytes)};
}

std::optional<QByteArray> WorkerPictures::png(const QByteArray& bytes, Foreign format, std::stop_token stop)
{
    const FileDescriptor source = PixelMemory::make(static_cast<std::size_t>(bytes.size()));
    const FileDescriptor target(::memfd_create("orvane-png", MFD_CLOEXEC));
    if (!source || !target || !PixelMemory::write(source.get(), bytes))
        return std::nullopt;
    const auto answer = m_converting.ask(Kind::conversion, bytesOf(Conversion{asTold(format)}),
                                         std::array{source.get(), target.get()}, stop);
    const auto written = answer ? payloadAs<Written>(*answer) : std::nullopt;
    struct stat file {};
    if (!written || written->bytes > largestPng || ::fstat(target.get(), &file) != 0 ||
        static_cast<std::uint64_t>(file.st_size) != written->bytes)
        return std::nullopt;
    auto png = PixelMemory::read(target.get(), static_cast<qsizetype>(file.st_size));
    return png && png->startsWith(pngSignature) ? png : std::nullopt;
}

} // namespace orvane
