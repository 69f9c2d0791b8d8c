// Reads the bytes of a fuzzer as a script: numbers and byte strings, until they end.
#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace orvane::fuzz {

class Script {
public:
    Script(const std::uint8_t* data, std::size_t size)
        : m_bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size))
    {
    }

    [[nodiscard]] bool isOver() const { return m_at >= m_bytes.size(); }

    /// Missing bytes are zeros.
    template <typename Number>
    [[nodiscard]] Number number()
    {
        Number number{};
        const QByteArray taken = bytes(static_cast<qsizetype>(sizeof number));
        std::memcpy(&number, taken.constData(), static_cast<std::size_t>(taken.size()));
        return number;
    }

    /// Fewer where the script ends.
    [[nodiscard]] QByteArray bytes(qsizetype count)
    {
        const qsizetype given = std::min(count, m_bytes.size() - m_at);
        const QByteArray taken = m_bytes.sliced(m_at, given);
        m_at += given;
        return taken;
    }

    [[nodiscard]] QByteArray rest() { return bytes(m_bytes.size() - m_at); }

private:
    QByteArray m_bytes;
    qsizetype m_at = 0;
};

} // namespace orvane::fuzz
