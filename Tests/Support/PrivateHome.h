// A home of its own for a test or for a program under test: HOME and every XDG base directory lie in a
// temporary directory that goes with the object, so nothing of the user's is read or written.
#pragma once

#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace orvane::tests {

class PrivateHome {
public:
    PrivateHome();

    [[nodiscard]] QString path() const;
    [[nodiscard]] QString configDirectory() const;
    [[nodiscard]] QString dataDirectory() const;

    /// Points a child's environment here. The runtime directory stays: it holds the sockets of the session.
    void applyTo(QProcessEnvironment& environment) const;
    /// Points this process here, runtime directory included. Call before any thread is started.
    void applyToThisProcess() const;

private:
    QTemporaryDir m_directory;
};

} // namespace orvane::tests
