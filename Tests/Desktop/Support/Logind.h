// The inhibitors of logind, or of its stand-in on the private desktop.
#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace orvane::tests {

struct Inhibitor {
    QString what; // several kinds are joined by colons
    QString who;
    QString why;
    QString mode;
    quint32 uid = 0;
    quint32 pid = 0;
};

/// Returns those that are held now; nothing when nobody answers for logind on the system bus.
[[nodiscard]] std::optional<QList<Inhibitor>> inhibitors();

} // namespace orvane::tests
