// Small questions to the session bus. Each blocks, for five seconds at most.
#pragma once

#include <QDBusMessage>
#include <QString>
#include <QVariant>

namespace orvane::tests {

/// A method's answer; an error message when there is none.
[[nodiscard]] QDBusMessage ask(const QString& service, const QString& path, const QString& interface,
                               const QString& method, const QVariantList& arguments = {});

/// A property's value, or an invalid variant.
[[nodiscard]] QVariant property(const QString& service, const QString& path, const QString& interface,
                                const QString& name);

/// The process that owns a name; 0 when nobody does.
[[nodiscard]] qint64 processOnSessionBus(const QString& name);

} // namespace orvane::tests
