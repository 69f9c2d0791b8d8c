// The inhibitors of logind, or of its stand-in on the private desktop.
#pragma once

#include <QList>
#include <QString>

#include <optional>

#include <sys/types.h>

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

/// Stops the program that answers for logind, so that every question to it runs into its time limit, until
/// the end of the object. Throws std::runtime_error when there is none.
class StuckLogind {
public:
    StuckLogind();
    ~StuckLogind();
    StuckLogind(const StuckLogind&) = delete;
    StuckLogind& operator=(const StuckLogind&) = delete;

private:
    pid_t m_process;
};

} // namespace orvane::tests
