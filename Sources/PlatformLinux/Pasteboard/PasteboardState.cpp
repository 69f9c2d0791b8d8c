#include "PlatformLinux/Pasteboard/PasteboardState.h"

namespace orvane {

int PasteboardState::claim()
{
    PasteboardContents former; // freed without the lock
    const std::scoped_lock lock(m_mutex);
    std::swap(former, m_contents);
    m_contents.changeCount = ++m_count;
    ++m_claimsUntold;
    ++m_generation;
    m_isOurs = true;
    m_isBeingWritten = true;
    return m_contents.changeCount;
}

void PasteboardState::claimTold()
{
    const std::scoped_lock lock(m_mutex);
    if (m_claimsUntold > 0)
        --m_claimsUntold;
}

bool PasteboardState::foreignCopyTold()
{
    PasteboardContents former;
    const std::scoped_lock lock(m_mutex);
    if (m_claimsUntold > 0)
        return false;
    ++m_count;
    m_isOurs = false;
    m_isBeingWritten = false;
    std::swap(former, m_contents);
    return true;
}

bool PasteboardState::add(const QString& type, const QByteArray& data)
{
    const std::scoped_lock lock(m_mutex);
    return addLocked(type, data);
}

bool PasteboardState::addFiles(const QList<QUrl>& fileURLs)
{
    const std::scoped_lock lock(m_mutex);
    if (!addLocked(pasteboardType::fileURL, fileURLs.first().toEncoded()))
        return false;
    m_contents.fileURLs = fileURLs;
    return true;
}

bool PasteboardState::addLocked(const QString& type, const QByteArray& data)
{
    if (!m_isOurs)
        return false;
    m_contents.data.insert(type, data);
    if (!m_contents.types.contains(type))
        m_contents.types.append(type);
    return true;
}

std::optional<PasteboardContents> PasteboardState::ownContents() const
{
    const std::scoped_lock lock(m_mutex);
    return m_isOurs ? std::optional(m_contents) : std::nullopt;
}

void PasteboardState::finishWriting(Generation generation)
{
    const std::scoped_lock lock(m_mutex);
    if (generation == m_generation)
        m_isBeingWritten = false;
}

PasteboardState::Generation PasteboardState::generation() const
{
    const std::scoped_lock lock(m_mutex);
    return m_generation;
}

bool PasteboardState::isBeingWritten() const
{
    const std::scoped_lock lock(m_mutex);
    return m_isBeingWritten;
}

} // namespace orvane
