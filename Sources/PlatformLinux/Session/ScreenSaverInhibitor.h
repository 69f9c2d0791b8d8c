// Keeps the display from blanking; its end lets it blank again. Main thread.
#pragma once

#include <QString>

#include <memory>

namespace orvane {

class ScreenSaverInhibitor {
public:
    /// Null where there is neither an X server with a screen saver nor a session bus.
    static std::unique_ptr<ScreenSaverInhibitor> create(const QString& applicationName,
                                                        const QString& reason);
    ~ScreenSaverInhibitor();
    ScreenSaverInhibitor(const ScreenSaverInhibitor&) = delete;
    ScreenSaverInhibitor& operator=(const ScreenSaverInhibitor&) = delete;

private:
    struct ServiceCookie;

    ScreenSaverInhibitor() = default;
    static std::shared_ptr<ServiceCookie> askService(const QString& applicationName, const QString& reason);

    bool m_suspendedServer = false;
    std::shared_ptr<ServiceCookie> m_service;
};

} // namespace orvane
