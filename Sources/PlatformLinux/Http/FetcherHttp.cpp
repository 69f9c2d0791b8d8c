#include "PlatformLinux/Http/FetcherHttp.h"

#include "Platform/Protocols/FetchProtocol.h"
#include "Platform/RunLoop.h"
#include "PlatformLinux/Common/FileDescriptor.h"
#include "PlatformLinux/Common/HelperProgram.h"
#include "PlatformLinux/Http/HttpText.h"

#include <QFile>
#include <QProcess>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <sys/mman.h>
#include <sys/stat.h>

namespace orvane {

namespace {

/// A killed process ends within milliseconds.
constexpr int longestEnd = 1000;

PlatformError failure(const QString& reason)
{
    return {PlatformError::Kind::failed, reason};
}

PlatformError noAnswer()
{
    return failure(HttpText::tr("The connection ended without an answer."));
}

/// Reads a part of a file; shorter when the file is.
QByteArray bytesAt(int file, qint64 offset, qint64 size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    qint64 read = 0;
    while (read < size) {
        const auto count = ::pread(file, bytes.data() + read, static_cast<std::size_t>(size - read),
                                   static_cast<off_t>(offset + read));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        read += count;
    }
    bytes.truncate(read);
    return bytes;
}

Http::Answer readAnswer(int file)
{
    using namespace FetchProtocol;
    struct stat about {};
    if (::fstat(file, &about) != 0)
        return noAnswer();
    const QByteArray head = bytesAt(file, 0, sizeof(Status));
    Status status = unfinished;
    if (head.size() == sizeof(Status))
        std::memcpy(&status, head.constData(), sizeof(Status));
    if (status == unfinished)
        return noAnswer();
    const QByteArray rest = bytesAt(file, sizeof(Status), about.st_size - qint64{sizeof(Status)});
    switch (status) {
    case failed:
        return failure(QString::fromUtf8(rest));
    case silent:
        return failure(HttpText::tr("The server hasn’t answered for too long."));
    case tooLong:
        return failure(HttpText::tr("The server sends more than is loaded."));
    case insecure:
        return failure(HttpText::tr("Only secure addresses are loaded."));
    default:
        return Http::Response{status, rest};
    }
}

} // namespace

struct FetcherHttp::Transfer {
    std::shared_ptr<FileDescriptor> answer;
    Completion completion;
    QProcess process; // the last member: its end may still tell of the others
};

FetcherHttp::FetcherHttp(RunLoop& runLoop)
    : FetcherHttp(runLoop, QFile::decodeName(helperProgram("orvane-fetch")))
{
}

FetcherHttp::FetcherHttp(RunLoop& runLoop, QString program)
    : m_runLoop(runLoop), m_program(std::move(program))
{
}

FetcherHttp::~FetcherHttp()
{
    giveUp();
}

void FetcherHttp::giveUp()
{
    for (const auto& transfer : m_transfers) {
        transfer->process.disconnect();
        transfer->process.kill();
        transfer->process.waitForFinished(longestEnd);
    }
    m_transfers.clear();
}

void FetcherHttp::get(const Request& request, Completion completion)
{
    auto& transfer = *m_transfers.emplace_back(std::make_unique<Transfer>());
    transfer.completion = std::move(completion);
    transfer.answer = std::make_shared<FileDescriptor>(::memfd_create("orvane-answer", MFD_CLOEXEC));
    QProcess& process = transfer.process;
    // The fetcher's standard output is the file itself, so the body never passes through this thread.
    process.setStandardOutputFile(QStringLiteral("/proc/self/fd/%1").arg(transfer.answer->get()));
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setStandardInputFile(QProcess::nullDevice());
    QObject::connect(&process, &QProcess::finished, &process, [this, &transfer] { finish(transfer); });
    QObject::connect(&process, &QProcess::errorOccurred, &process,
                     [this, &transfer](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart)
                             finish(transfer);
                     });
    process.start(m_program, {request.url.toString(QUrl::FullyEncoded), QString::number(request.mostBytes),
                              QString::number(request.patience.count())});
}

void FetcherHttp::finish(Transfer& transfer)
{
    m_runLoop.performDetached([&runLoop = m_runLoop, answer = std::move(transfer.answer),
                               completion = std::move(transfer.completion)]() mutable {
        runLoop.perform([read = readAnswer(answer->get()), completion = std::move(completion)]() mutable {
            completion(std::move(read));
        });
    });
    // The process is still in the middle of telling that it has ended.
    const auto place = std::ranges::find_if(
        m_transfers, [&transfer](const auto& other) { return other.get() == &transfer; });
    m_runLoop.perform([ended = std::shared_ptr<Transfer>(std::move(*place))] {});
    m_transfers.erase(place);
}

} // namespace orvane
