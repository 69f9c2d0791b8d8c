// One inhibitor lock of logind; its end releases it.
#pragma once

#include "Platform/PowerAssertions.h"

#include <QDBusUnixFileDescriptor>
#include <QString>

#include <memory>

namespace orvane {

class LogindInhibitor {
public:
    struct Result {
        PowerAssertions::Status status;
        std::unique_ptr<LogindInhibitor> inhibitor;
        /// The reason for the log when there is no lock.
        QString error;
    };

    /// `what` is a list of lock types with colons between them. Waits for the answer for at most 0.4 s.
    [[nodiscard]] static Result create(const QString& what, const QString& who, const QString& why);

private:
    explicit LogindInhibitor(const QDBusUnixFileDescriptor& lock) : m_lock(lock) {}

    QDBusUnixFileDescriptor m_lock;
};

} // namespace orvane
