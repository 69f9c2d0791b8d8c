#include "Capabilities/ClipboardHistory/Panel/HistoryThumbnails.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr int atOnce = 2;

} // namespace

HistoryThumbnails::HistoryThumbnails(const HistoryViewModel& model, std::function<void()> arrived)
    : m_model(model), m_arrived(std::move(arrived)), m_self(std::make_shared<HistoryThumbnails*>(this))
{
}

HistoryThumbnails::~HistoryThumbnails() = default;

QImage HistoryThumbnails::squareOf(const QImage& image, int pixels)
{
    if (image.isNull())
        return {};
    const int edge = std::min(image.width(), image.height());
    const QRect middle((image.width() - edge) / 2, (image.height() - edge) / 2, edge, edge);
    // The conversion comes before the scaling: a picture of few colours would keep to these, in dots.
    return image.copy(middle)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied)
        .scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void HistoryThumbnails::setWanted(const QStringList& names, double scale)
{
    if (scale != m_scale)
        clear();
    m_scale = scale;
    const QSet<QString> wanted(names.begin(), names.end());
    m_thumbnails.removeIf([&wanted](const auto& entry) { return !wanted.contains(entry.key()); });
    m_waiting.clear();
    for (const QString& name : names) {
        if (m_unreadable.contains(name))
            m_thumbnails.insert(name, {State::missing, {}});
        else if (!m_thumbnails.contains(name) && !m_waiting.contains(name))
            m_waiting.append(name);
    }
    fetchNext();
}

void HistoryThumbnails::clear()
{
    ++m_generation;
    m_thumbnails.clear();
    m_waiting.clear();
}

void HistoryThumbnails::fetchNext()
{
    while (m_fetching < atOnce && !m_waiting.isEmpty()) {
        const QString name = m_waiting.takeFirst();
        m_thumbnails.insert(name, {});
        ++m_fetching;
        fetch(m_self, name, m_generation);
    }
}

UnownedTask HistoryThumbnails::fetch(std::weak_ptr<HistoryThumbnails*> weak, QString name, int generation)
{
    const auto pixels = static_cast<int>(std::lround(side * (*weak.lock())->m_scale));
    auto read = [name, pixels, provider = (*weak.lock())->m_model.imageProvider] {
        const std::optional<QImage> whole = provider ? provider(name) : std::nullopt;
        return whole ? squareOf(*whole, pixels) : QImage();
    };
    const QImage image = co_await onPool(read);
    if (const auto self = weak.lock())
        (*self)->take(name, generation, image);
}

void HistoryThumbnails::take(const QString& name, int generation, const QImage& image)
{
    --m_fetching;
    if (image.isNull())
        m_unreadable.insert(name);
    const auto entry = m_thumbnails.find(name);
    if (generation == m_generation && entry != m_thumbnails.end()) {
        *entry = {image.isNull() ? State::missing : State::ready, image};
        m_arrived();
    }
    fetchNext();
}

HistoryThumbnails::State HistoryThumbnails::state(const QString& name) const
{
    return m_thumbnails.value(name).state;
}

QImage HistoryThumbnails::image(const QString& name) const
{
    return m_thumbnails.value(name).image;
}

} // namespace orvane
