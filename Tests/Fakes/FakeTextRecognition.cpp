#include "Fakes/FakeTextRecognition.h"

namespace orvane {

TextRecognition::Languages FakeTextRecognition::languages()
{
    const std::lock_guard lock(m_mutex);
    return m_languages;
}

void FakeTextRecognition::prepare(std::stop_token)
{
    const std::lock_guard lock(m_mutex);
    ++m_preparations;
}

std::optional<QStringList> FakeTextRecognition::recognize(const Image& image, std::stop_token stop)
{
    const std::lock_guard lock(m_mutex);
    m_images.append(image);
    if (stop.stop_requested() || m_languages.inUse.isEmpty() || image.width < 1 || image.height < 1 ||
        image.pixels.size() != qsizetype{image.width} * image.height * 4)
        return std::nullopt;
    const auto text = m_texts.find(image.pixels);
    return text != m_texts.end() ? std::optional(*text) : m_anyLines;
}

void FakeTextRecognition::add(const QByteArray& pixels, const QStringList& lines)
{
    const std::lock_guard lock(m_mutex);
    m_texts.insert(pixels, lines);
}

void FakeTextRecognition::setLanguages(const Languages& languages)
{
    const std::lock_guard lock(m_mutex);
    m_languages = languages;
}

void FakeTextRecognition::setAnyLines(const std::optional<QStringList>& lines)
{
    const std::lock_guard lock(m_mutex);
    m_anyLines = lines;
}

int FakeTextRecognition::preparations() const
{
    const std::lock_guard lock(m_mutex);
    return m_preparations;
}

QList<TextRecognition::Image> FakeTextRecognition::images() const
{
    const std::lock_guard lock(m_mutex);
    return m_images;
}

} // namespace orvane
