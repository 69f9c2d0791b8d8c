// The desktop's thumbnailer, asked over the session bus. Any thread but the main one.
#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <mutex>
#include <stop_token>

namespace orvane {

class DesktopThumbnailer {
public:
    explicit DesktopThumbnailer(std::chrono::milliseconds limit) : m_limit(limit) {}

    /// Has the thumbnailer put a picture of the file into the cache. True once it says that it did. One that
    /// isn't there or takes longer than the limit isn't asked again for a minute.
    [[nodiscard]] bool make(const QByteArray& uri, const QString& mimeType, const QString& flavour,
                            const std::stop_token& stop);

private:
    enum class Outcome { made, failed, noAnswer };

    [[nodiscard]] Outcome ask(const QByteArray& uri, const QString& mimeType, const QString& flavour,
                              const std::stop_token& stop) const;

    const std::chrono::milliseconds m_limit;
    std::mutex m_mutex;
    std::chrono::steady_clock::time_point m_askFrom; // guarded by the mutex
};

} // namespace orvane
