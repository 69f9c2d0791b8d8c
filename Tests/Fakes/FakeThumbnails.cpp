#include "Fakes/FakeThumbnails.h"

namespace orvane {

std::optional<Pictures::Pixels> FakeThumbnails::thumbnail(const QString& path, Pictures::Size most,
                                                          std::stop_token stop)
{
    {
        const std::scoped_lock lock(m_mutex);
        const auto kept = m_kept.constFind(path);
        if (kept != m_kept.constEnd() && kept->size.width <= most.width && kept->size.height <= most.height)
            return *kept;
    }
    return m_pictures.thumbnail(path, most, stop);
}

void FakeThumbnails::add(const QString& path, const Pictures::Pixels& pixels)
{
    const std::scoped_lock lock(m_mutex);
    m_kept.insert(path, pixels);
}

} // namespace orvane
