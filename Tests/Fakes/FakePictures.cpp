#include "Fakes/FakePictures.h"

#include <algorithm>
#include <cmath>

namespace orvane {

std::optional<Pictures::Size> FakePictures::measure(const QString& path, std::stop_token stop)
{
    if (stop.stop_requested())
        return std::nullopt;
    const std::lock_guard lock(m_mutex);
    if (elsewhere && !m_files.contains(path))
        return elsewhere(path);
    return m_files.value(path);
}

std::optional<QString> FakePictures::writeCopy(const Copy& copy, std::stop_token stop)
{
    if (onWrite)
        onWrite(copy);
    if (stop.stop_requested())
        return std::nullopt;
    const std::lock_guard lock(m_mutex);
    const auto source = m_files.value(copy.source);
    if (!source || *source != copy.sourceSize || copy.size.width < 1 || copy.size.height < 1)
        return std::nullopt;
    int index = 0;
    while (m_files.contains(copy.candidate(index)))
        ++index;
    m_files.insert(copy.candidate(index), copy.size);
    m_copies.append(copy);
    return copy.candidate(index);
}

std::optional<Pictures::Pixels> FakePictures::thumbnail(const QString& path, Size most, std::stop_token stop)
{
    const auto size = measure(path, stop);
    if (!size || most.width < 1 || most.height < 1)
        return std::nullopt;
    const double scale =
        std::min({1.0, double(most.width) / size->width, double(most.height) / size->height});
    const auto side = [scale](int length) {
        return std::max(1, static_cast<int>(std::lround(length * scale)));
    };
    const Size fitted{side(size->width), side(size->height)};
    return Pixels{fitted, QByteArray(qsizetype{fitted.width} * fitted.height * 4, '\xFF')};
}

std::optional<QByteArray> FakePictures::png(const QByteArray& bytes, Foreign format, std::stop_token stop)
{
    return toPng && !stop.stop_requested() ? toPng(bytes, format) : std::nullopt;
}

void FakePictures::add(const QString& path, Size size)
{
    const std::lock_guard lock(m_mutex);
    m_files.insert(path, size);
}

void FakePictures::addOther(const QString& path)
{
    const std::lock_guard lock(m_mutex);
    m_files.insert(path, std::nullopt);
}

bool FakePictures::exists(const QString& path) const
{
    const std::lock_guard lock(m_mutex);
    return m_files.contains(path);
}

QList<Pictures::Copy> FakePictures::copies() const
{
    const std::lock_guard lock(m_mutex);
    return m_copies;
}

} // namespace orvane
