// A datagram socket in place of the system journal's, and the entries that arrive there.
#pragma once

#include "PlatformLinux/Common/FileDescriptor.h"

#include <QByteArray>
#include <QMap>
#include <QTemporaryDir>

#include <algorithm>
#include <iterator>
#include <optional>

#include <sys/socket.h>
#include <sys/un.h>

namespace orvane::tests {

class JournalStandIn {
public:
    using Entry = QMap<QByteArray, QByteArray>;

    JournalStandIn() : m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        const QByteArray name = path();
        std::copy(name.begin(), name.end(), std::begin(address.sun_path));
        if (::bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            qFatal("No socket can be made at %s", name.constData());
    }

    [[nodiscard]] QByteArray path() const
    {
        return m_directory.filePath(QStringLiteral("socket")).toLocal8Bit();
    }

    /// Returns the next entry that has arrived; nothing when there is none, or when it breaks the protocol.
    std::optional<Entry> next()
    {
        QByteArray datagram(qsizetype{1024} * 1024, '\0');
        const ssize_t size = ::recv(m_socket.get(), datagram.data(), static_cast<size_t>(datagram.size()), 0);
        if (size < 0)
            return std::nullopt;
        datagram.truncate(size);
        return parse(datagram);
    }

    /// Reads "KEY=value
    /// ", or "KEY
    /// ", the length as 64 bits with the lowest byte first, the value and "
    /// ".
    static std::optional<Entry> parse(const QByteArray& datagram)
    {
        Entry entry;
        for (qsizetype at = 0; at < datagram.size();) {
            const qsizetype end = datagram.indexOf('\n', at);
            if (end < 0)
                return std::nullopt;
            const QByteArray line = datagram.sliced(at, end - at);
            at = end + 1;
            const qsizetype equals = line.indexOf('=');
            if (equals >= 0) {
                entry.insert(line.first(equals), line.sliced(equals + 1));
                continue;
            }
            if (datagram.size() - at < 8)
                return std::nullopt;
            qsizetype length = 0;
            for (int byte = 7; byte >= 0; --byte)
                length = length << 8 | static_cast<unsigned char>(datagram[at + byte]);
            at += 8;
            if (length > datagram.size() - at - 1 || datagram[at + length] != '\n')
                return std::nullopt;
            entry.insert(line, datagram.sliced(at, length));
            at += length + 1;
        }
        return entry;
    }

private:
    QTemporaryDir m_directory;
    FileDescriptor m_socket;
};

} // namespace orvane::tests
