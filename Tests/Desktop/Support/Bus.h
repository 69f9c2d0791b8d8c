// Questions to the session bus. Each blocks for at most five seconds.
#pragma once

#include <QDBusMessage>
#include <QString>
#include <QVariant>

namespace orvane::tests {

/// Returns a method's answer; an error message when there is none.
[[nodiscard]] QDBusMessage ask(const QString& service, const QString& path, const QString& interface,
                               const QString& method, const QVariantList& arguments = {});

/// Returns a property's value, or an invalid variant.
[[nodiscard]] QVariant property(const QString& service, const QString& path, const QString& interface,
                                const QString& name);

/// Returns the process that owns a name; 0 when none does.
[[nodiscard]] qint64 processOnSessionBus(const QString& name);

} // namespace orvane::tests
