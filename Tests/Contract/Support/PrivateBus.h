// A message bus made for one test.
#pragma once

#include "Contract/Support/ForeignProgram.h"

#include <QDBusConnection>
#include <QMap>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>

namespace orvane::tests {

/// A separate bus with connections to it; all are closed at the end.
class PrivateBus {
public:
    /// `policy` is added to one that allows everything. `startable` are the programs that the bus starts for
    /// names that nobody owns.
    explicit PrivateBus(const QString& policy = {}, const QMap<QString, QString>& startable = {});
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    [[nodiscard]] QDBusConnection connection();
    [[nodiscard]] QString address() const;

private:
    void write(const QString& name, const QString& text);

    QTemporaryDir m_directory;
    std::optional<ForeignProgram> m_daemon;
    QStringList m_connections;
};

} // namespace orvane::tests
