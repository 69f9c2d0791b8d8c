// Pictures through the worker, which gets open files alone: the paths stay here.
#pragma once

#include "Platform/Pictures.h"
#include "PlatformLinux/Worker/WorkerClient.h"

namespace orvane {

class WorkerPictures : public Pictures {
public:
    static constexpr std::chrono::seconds timeLimit{30};

    explicit WorkerPictures(LogSink& log);
    /// With another program and another limit.
    WorkerPictures(QByteArray program, LogSink& log, std::chrono::milliseconds limit);

    [[nodiscard]] std::optional<Size> measure(const QString& path, std::stop_token stop) override;
    [[nodiscard]] std::optional<QString> writeCopy(const Copy& copy, std::stop_token stop) override;
    [[nodiscard]] std::optional<Pixels> thumbnail(const QString& path, Size most,
                                                  std::stop_token stop) override;

    /// Ends the request that runs, and fails all that come after it. Any thread, the main one too.
    void giveUp() { m_client.giveUp(); }

private:
    WorkerClient m_client;
};

} // namespace orvane
