#include "Platform/TimedBuffer.h"

#include <algorithm>
#include <utility>

namespace orvane {

TimedBuffer::TimedBuffer(QByteArray bytes, IsOver isOver, qint64 mostAtOnce)
    : m_bytes(std::move(bytes)), m_isOver(std::move(isOver)), m_mostAtOnce(mostAtOnce)
{
    open(ReadOnly | Unbuffered);
}

TimedBuffer::TimedBuffer(IsOver isOver) : m_isOver(std::move(isOver))
{
    open(WriteOnly | Unbuffered);
}

qint64 TimedBuffer::readData(char* data, qint64 maxSize)
{
    // The end and no failure: told of a failure, libtiff 4.5 writes in front of its memory.
    if (m_isOver())
        return 0;
    const qint64 count = std::min({maxSize, std::max<qint64>(m_bytes.size() - pos(), 0), m_mostAtOnce});
    if (count > 0)
        std::copy_n(m_bytes.constData() + pos(), count, data);
    return count;
}

qint64 TimedBuffer::writeData(const char* data, qint64 size)
{
    if (m_isOver())
        return -1;
    if (pos() + size > m_bytes.size())
        m_bytes.resize(pos() + size);
    std::copy_n(data, size, m_bytes.data() + pos());
    return size;
}

} // namespace orvane
