// A desktop that records its pictures. Any thread.
#pragma once

#include "Platform/DesktopPicture.h"
#include "Platform/PlatformError.h"

#include <QMap>

#include <mutex>
#include <optional>

namespace orvane {

class FakeDesktopPicture : public DesktopPicture {
public:
    void set(const QString& path, const QList<Screen>& screens) override
    {
        const std::lock_guard lock(m_mutex);
        for (const Screen& screen : screens) {
            if (refused == screen.localizedName)
                throw PlatformError(PlatformError::Kind::failed, QStringLiteral("The desktop refuses."));
            pictures.insert(screen.localizedName, path);
            calls.append(path);
        }
    }

    /// By the display's name.
    QMap<QString, QString> pictures;
    /// One entry for each display of each call.
    QStringList calls;
    /// The name of a display that takes no picture.
    std::optional<QString> refused;

private:
    std::mutex m_mutex;
};

} // namespace orvane
