// Another program on the private desktop, ended with the object.
#pragma once

#include <QProcess>
#include <QStringList>

namespace orvane::tests {

class ForeignProgram {
public:
    /// Waits until it runs, but not until it shows anything.
    ForeignProgram(const QString& program, const QStringList& arguments);
    ~ForeignProgram();
    ForeignProgram(const ForeignProgram&) = delete;
    ForeignProgram& operator=(const ForeignProgram&) = delete;

    [[nodiscard]] qint64 pid() const { return m_process.processId(); }

private:
    QProcess m_process;
};

} // namespace orvane::tests
