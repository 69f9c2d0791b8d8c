// Asks the worker, which is started at the first request and anew after each of its ends. Any thread but the
// main one: a request waits for its turn and for its answer.
#pragma once

#include "Platform/LogSink.h"
#include "Platform/Protocols/WorkerProtocol.h"
#include "PlatformLinux/Worker/WorkerProcess.h"

#include <QByteArray>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace orvane {

class WorkerClient {
public:
    using Bytes = std::vector<std::byte>;

    /// `program` returns the path of its executable and is asked at each start.
    WorkerClient(std::function<QByteArray()> program, LogSink& log, std::chrono::milliseconds limit);

    /// Returns the payload of the answer. Nothing when the worker can't do it, dies of it, answers otherwise
    /// than it may, or takes longer than the limit; it is killed then. A stop ends the request in the same
    /// way.
    [[nodiscard]] std::optional<Bytes> ask(WorkerProtocol::Kind kind, std::span<const std::byte> payload,
                                           std::span<const int> descriptors, const std::stop_token& stop);

    /// Ends the request that waits and fails all that come after it. Any thread, the main one too.
    void giveUp() { m_givenUp.request_stop(); }

    struct Answer {
        WorkerProtocol::Status status{};
        Bytes payload;
    };
    /// Nothing unless the bytes are an answer to that request.
    [[nodiscard]] static std::optional<Answer> answerTo(const WorkerProtocol::Header& request,
                                                        std::span<const std::byte> bytes);

private:
    class Turn;

    [[nodiscard]] std::optional<Bytes> askInTurn(WorkerProtocol::Kind kind,
                                                 std::span<const std::byte> payload,
                                                 std::span<const int> descriptors,
                                                 const std::stop_token& stop);
    [[nodiscard]] bool startProcess();
    /// False when there is no worker that takes the message.
    [[nodiscard]] bool send(std::span<const std::byte> message, std::span<const int> descriptors);
    [[nodiscard]] std::optional<Bytes> receive(const std::stop_token& stop);

    const std::function<QByteArray()> m_program;
    LogSink& m_log;
    const std::chrono::milliseconds m_limit;
    std::mutex m_mutex;
    std::condition_variable_any m_turnEnded;
    bool m_isTaken = false; // guarded by the mutex
    std::stop_source m_givenUp;
    // Used by the thread whose turn it is:
    std::unique_ptr<WorkerProcess> m_process;
    std::uint32_t m_number = 0;
};

} // namespace orvane
