// Thumbnails in memory, and beyond them those that the pictures give. Any thread.
#pragma once

#include "Platform/Thumbnails.h"

#include <QMap>

#include <mutex>

namespace orvane {

class FakeThumbnails : public Thumbnails {
public:
    explicit FakeThumbnails(Pictures& pictures) : m_pictures(pictures) {}

    [[nodiscard]] std::optional<Pictures::Pixels> thumbnail(const QString& path, Pictures::Size most,
                                                            std::stop_token stop) override;

    /// Lets the desktop have a picture of the file, which is given if it is small enough.
    void add(const QString& path, const Pictures::Pixels& pixels);

private:
    Pictures& m_pictures;
    std::mutex m_mutex;
    QMap<QString, Pictures::Pixels> m_kept;
};

} // namespace orvane
