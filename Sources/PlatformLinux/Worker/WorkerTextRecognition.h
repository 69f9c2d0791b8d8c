// Text by a worker of its own, so that it never waits for pictures that are being resized. The worker gets
// pixels in memory and open models alone.
#pragma once

#include "Platform/TextRecognition.h"
#include "PlatformLinux/Worker/TextLanguages.h"
#include "PlatformLinux/Worker/WorkerClient.h"

#include <functional>

namespace orvane {

class WorkerTextRecognition : public TextRecognition {
public:
    static constexpr std::chrono::seconds timeLimit{30};

    /// With the user's languages and the system's models.
    explicit WorkerTextRecognition(LogSink& log);
    /// `findLanguages` is called at each use, on the caller's thread.
    WorkerTextRecognition(QByteArray program, std::function<TextLanguages()> findLanguages, LogSink& log,
                          std::chrono::milliseconds limit);

    [[nodiscard]] Languages languages() override;
    void prepare(std::stop_token stop) override;
    [[nodiscard]] std::optional<QStringList> recognize(const Image& image, std::stop_token stop) override;

    /// Ends the request that runs, and fails all that come after it. Any thread, the main one too.
    void giveUp() { m_client.giveUp(); }

private:
    const std::function<TextLanguages()> m_findLanguages;
    WorkerClient m_client;
};

} // namespace orvane
