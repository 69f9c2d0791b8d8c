// A connection to the session bus for one piece of work on a thread of the pool. Every call waits for its
// answer, at most for two seconds.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariant>

namespace orvane {

class BlockingBus {
public:
    BlockingBus();
    ~BlockingBus();
    BlockingBus(const BlockingBus&) = delete;
    BlockingBus& operator=(const BlockingBus&) = delete;

    /// False without an owner, and without a bus.
    [[nodiscard]] bool hasOwner(const QString& name) const;
    /// Returns the answer, which may be an error.
    [[nodiscard]] QDBusMessage ask(const QString& service, const QString& path, const QString& interface,
                                   const QString& method, const QVariantList& arguments) const;
    /// Asks for something to be done. Throws PlatformError with the reason when it wasn't.
    void call(const QString& service, const QString& path, const QString& interface, const QString& method,
              const QVariantList& arguments) const;
    /// Throws PlatformError unless the message is an answer without an error.
    static void check(const QDBusMessage& answer);

private:
    QString m_name;
    QDBusConnection m_bus;
};

} // namespace orvane
