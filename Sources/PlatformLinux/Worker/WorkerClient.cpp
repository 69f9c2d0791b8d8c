#include "PlatformLinux/Worker/WorkerClient.h"

#include "PlatformLinux/Common/EventSignal.h"
#include "PlatformLinux/Common/PoolThreadLent.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>

namespace orvane {

using namespace WorkerProtocol;

namespace {

using Clock = std::chrono::steady_clock;

/// Waits until the worker has something to say, with an end. False at the end and after a stop.
bool awaitAnswer(int descriptor, Clock::time_point end, const std::stop_token& stop)
{
    EventSignal stopped;
    const std::stop_callback raise(stop, [&stopped] { stopped.raise(); });
    while (!stop.stop_requested()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0)
            return false;
        std::array<pollfd, 2> waits{{{descriptor, POLLIN, 0}, {stopped.descriptor(), POLLIN, 0}}};
        if (::poll(waits.data(), waits.size(), static_cast<int>(left.count())) > 0 && waits[0].revents != 0)
            return true;
    }
    return false;
}

} // namespace

/// The time in which one thread has the worker for itself.
class WorkerClient::Turn {
public:
    Turn(WorkerClient& client, const std::stop_token& stop) : m_client(client)
    {
        std::unique_lock lock(client.m_mutex);
        m_hasCome = client.m_turnEnded.wait(lock, stop, [&client] { return !client.m_isTaken; });
        if (m_hasCome)
            client.m_isTaken = true;
    }
    ~Turn()
    {
        if (!m_hasCome)
            return;
        {
            const std::lock_guard lock(m_client.m_mutex);
            m_client.m_isTaken = false;
        }
        m_client.m_turnEnded.notify_one();
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    /// False after a stop.
    [[nodiscard]] bool hasCome() const { return m_hasCome; }

private:
    WorkerClient& m_client;
    bool m_hasCome = false;
};

WorkerClient::WorkerClient(std::function<QByteArray()> program, LogSink& log, std::chrono::milliseconds limit)
    : m_program(std::move(program)), m_log(log), m_limit(limit)
{
}

bool WorkerClient::startProcess()
{
    m_process.reset();
    try {
        m_process = std::make_unique<WorkerProcess>(m_program());
        return true;
    } catch (const std::system_error& error) {
        m_log.write(
            LogLevel::error, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Worker"),
            QStringLiteral(
                "The program that opens pictures and reads text can't be started (%1). Install Orvane again.")
                .arg(QString::fromLocal8Bit(error.what())));
        return false;
    }
}

bool WorkerClient::send(std::span<const std::byte> message, std::span<const int> descriptors)
{
    iovec data{const_cast<std::byte*>(message.data()),
               message.size()}; // NOLINT(*-const-cast): it is only read
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int) * mostDescriptors)> control{};
    msghdr packet{};
    packet.msg_iov = &data;
    packet.msg_iovlen = 1;
    packet.msg_control = control.data();
    packet.msg_controllen = CMSG_SPACE(descriptors.size_bytes());
    cmsghdr* const part = CMSG_FIRSTHDR(&packet);
    part->cmsg_level = SOL_SOCKET;
    part->cmsg_type = SCM_RIGHTS;
    part->cmsg_len = CMSG_LEN(descriptors.size_bytes());
    std::memcpy(CMSG_DATA(part), descriptors.data(), descriptors.size_bytes());
    // The worker reads a request before it gets the next, so there is room for this one.
    return ::sendmsg(m_process->descriptor(), &packet, MSG_NOSIGNAL | MSG_DONTWAIT) ==
           static_cast<ssize_t>(message.size());
}

std::optional<WorkerClient::Bytes> WorkerClient::receive(const std::stop_token& stop)
{
    if (!awaitAnswer(m_process->descriptor(), Clock::now() + m_limit, stop))
        return std::nullopt;
    // One byte more than is allowed, so that a longer one is seen. There is no room for descriptors.
    Bytes answer(longestMessage + 1);
    const ssize_t count = ::recv(m_process->descriptor(), answer.data(), answer.size(), MSG_DONTWAIT);
    if (count <= 0)
        return std::nullopt;
    answer.resize(static_cast<std::size_t>(count));
    return answer;
}

std::optional<WorkerClient::Answer> WorkerClient::answerTo(const Header& request,
                                                           std::span<const std::byte> bytes)
{
    const auto message = decode(bytes);
    if (!message || message->header.kind != request.kind || message->header.number != request.number)
        return std::nullopt;
    const Status status = message->header.status;
    const bool isFailure = status == Status::refused || status == Status::failed;
    if (status != Status::done && !(isFailure && message->payload.empty()))
        return std::nullopt;
    return Answer{status, {message->payload.begin(), message->payload.end()}};
}

std::optional<WorkerClient::Bytes> WorkerClient::ask(Kind kind, std::span<const std::byte> payload,
                                                     std::span<const int> descriptors,
                                                     const std::stop_token& stop)
{
    const PoolThreadLent lent;
    std::stop_source end;
    const auto request = [&end] { end.request_stop(); };
    const std::stop_callback byCaller(stop, request);
    const std::stop_callback byAll(m_givenUp.get_token(), request);
    const Turn turn(*this, end.get_token());
    if (!turn.hasCome() || end.stop_requested())
        return std::nullopt;
    try {
        return askInTurn(kind, payload, descriptors, end.get_token());
    } catch (const std::system_error&) { // no descriptor is left to wait with
        m_process.reset();
        return std::nullopt;
    }
}

std::optional<WorkerClient::Bytes> WorkerClient::askInTurn(Kind kind, std::span<const std::byte> payload,
                                                           std::span<const int> descriptors,
                                                           const std::stop_token& stop)
{
    const Header request{.kind = kind, .number = ++m_number};
    const Bytes message = encode(request, payload);
    // A worker that has ended for want of work takes no message, and a new one gets it. A worker that ends
    // after it took the message has ended by it.
    if (!(m_process && send(message, descriptors)) && !(startProcess() && send(message, descriptors))) {
        m_process.reset();
        return std::nullopt;
    }
    const auto bytes = receive(stop);
    const auto answer = bytes ? answerTo(request, *bytes) : std::nullopt;
    if (!answer) {
        m_process.reset(); // dead, late, or not to be trusted
        return std::nullopt;
    }
    return answer->status == Status::done ? std::optional(answer->payload) : std::nullopt;
}

} // namespace orvane
