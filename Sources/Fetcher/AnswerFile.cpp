#include "Fetcher/AnswerFile.h"

#include <cerrno>
#include <system_error>

#include <unistd.h>

namespace orvane {

namespace {

constexpr int file = STDOUT_FILENO;

[[noreturn]] void throwErrno()
{
    throw std::system_error(errno, std::generic_category(), "standard output");
}

} // namespace

AnswerFile::AnswerFile()
{
    writeStatus(FetchProtocol::unfinished);
    if (::lseek(file, sizeof(FetchProtocol::Status), SEEK_SET) < 0)
        throwErrno();
}

void AnswerFile::append(const QByteArray& bytes)
{
    write(bytes);
}

void AnswerFile::finish(int status)
{
    writeStatus(status);
}

void AnswerFile::fail(FetchProtocol::Status status, const QString& reason)
{
    constexpr auto start = static_cast<off_t>(sizeof(FetchProtocol::Status));
    if (::ftruncate(file, start) != 0 || ::lseek(file, start, SEEK_SET) < 0)
        throwErrno();
    write(reason.toUtf8());
    writeStatus(status);
}

void AnswerFile::write(const QByteArray& bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const auto count =
            ::write(file, bytes.constData() + written, static_cast<std::size_t>(bytes.size() - written));
        if (count < 0 && errno != EINTR)
            throwErrno();
        written += count < 0 ? 0 : count;
    }
}

void AnswerFile::writeStatus(FetchProtocol::Status status)
{
    if (::pwrite(file, &status, sizeof(status), 0) != static_cast<ssize_t>(sizeof(status)))
        throwErrno();
}

} // namespace orvane
