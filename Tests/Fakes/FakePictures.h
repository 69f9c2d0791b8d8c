// Pictures in memory: each is a path with a size and the order by which it was written. Any thread.
#pragma once

#include "Platform/Pictures.h"

#include <QMap>
#include <QSet>

#include <mutex>

namespace orvane {

class FakePictures : public Pictures {
public:
    [[nodiscard]] std::optional<Size> measure(const QString& path, std::stop_token stop) override;
    [[nodiscard]] std::optional<QString> writeCopy(const Copy& copy, std::stop_token stop) override;
    [[nodiscard]] std::optional<Pixels> thumbnail(const QString& path, Size most,
                                                  std::stop_token stop) override;
    /// Asks `toPng`.
    [[nodiscard]] std::optional<QByteArray> png(const QByteArray& bytes, Foreign format,
                                                std::stop_token stop) override;

    /// Puts a picture there.
    void add(const QString& path, Size size);
    /// Puts a file there that is no picture.
    void addOther(const QString& path);
    [[nodiscard]] bool exists(const QString& path) const;
    /// Returns the orders that have led to a file.
    [[nodiscard]] QList<Copy> copies() const;

    /// Called before each copy is written, without a lock.
    std::function<void(const Copy&)> onWrite;
    /// Converts a picture. Without it nothing can be converted.
    std::function<std::optional<QByteArray>(const QByteArray&, Foreign)> toPng;
    /// Measures what was never added, such as files on the disk. Called with a lock.
    std::function<std::optional<Size>(const QString& path)> elsewhere;

private:
    mutable std::mutex m_mutex;
    QMap<QString, std::optional<Size>> m_files; // without a size when it is no picture
    QList<Copy> m_copies;
};

} // namespace orvane
