// Pictures through the worker, which gets open files alone: the paths stay here.
#pragma once

#include "Platform/Pictures.h"
#include "PlatformLinux/Worker/WorkerClient.h"

namespace orvane {

class WorkerPictures : public Pictures {
public:
    static constexpr std::chrono::seconds timeLimit{30};

    explicit WorkerPictures(LogSink& log, std::chrono::milliseconds limit = timeLimit);
    /// With another program and another limit.
    WorkerPictures(QByteArray program, LogSink& log, std::chrono::milliseconds limit);

    [[nodiscard]] std::optional<Size> measure(const QString& path, std::stop_token stop) override;
    [[nodiscard]] std::optional<QString> writeCopy(const Copy& copy, std::stop_token stop) override;
    [[nodiscard]] std::optional<Pixels> thumbnail(const QString& path, Size most,
                                                  std::stop_token stop) override;
    [[nodiscard]] std::optional<QByteArray> png(const QByteArray& bytes, Foreign format,
                                                std::stop_token stop) override;

    /// Returns the picture of an entry of the desktop's thumbnail cache. Nothing unless it was made for a
    /// file with that modification time, in seconds.
    [[nodiscard]] std::optional<Pixels> cachedThumbnail(const QString& entry, std::uint64_t modified,
                                                        Size most, const std::stop_token& stop);

    /// Ends the request that runs, and fails all that come after it. Any thread, the main one too.
    void giveUp()
    {
        m_client.giveUp();
        m_converting.giveUp();
    }

private:
    [[nodiscard]] std::optional<Pixels> askForPixels(WorkerProtocol::Kind kind,
                                                     std::span<const std::byte> order, const QString& path,
                                                     WorkerProtocol::PictureSize most,
                                                     const std::stop_token& stop);

    WorkerClient m_client;
    /// A worker of its own, so that a copied picture doesn't wait for a batch of files.
    WorkerClient m_converting;
};

} // namespace orvane
