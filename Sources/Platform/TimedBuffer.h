// Bytes in memory that can be read, or written, only until their time is over: a decoder that asks for more
// finds their end then, and an encoder fails, whatever is left of their work. What a decoder returns after
// that may be a part.
#pragma once

#include <QByteArray>
#include <QIODevice>

#include <functional>
#include <limits>

namespace orvane {

class TimedBuffer : public QIODevice {
public:
    /// Asked at each reading and writing; true from some moment on.
    using IsOver = std::function<bool()>;

    /// Opens it for reading. No reading gives more than `mostAtOnce`, for decoders to which a few bytes can
    /// mean much work; not all of them go on after a part of what they have asked for.
    TimedBuffer(QByteArray bytes, IsOver isOver, qint64 mostAtOnce = std::numeric_limits<qint64>::max());
    /// Opens it for writing.
    explicit TimedBuffer(IsOver isOver);

    /// Returns what was written.
    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }
    [[nodiscard]] qint64 size() const override { return m_bytes.size(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    QByteArray m_bytes;
    const IsOver m_isOver;
    const qint64 m_mostAtOnce = 0;
};

} // namespace orvane
