// A separate home for a test or for a program under test: HOME and every XDG base directory lie in a
// temporary directory that is removed with the object, so nothing of the user's is read or written.
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

    /// Makes a child's environment use this home. The runtime directory stays: it holds the sockets of the
    /// session.
    void applyTo(QProcessEnvironment& environment) const;
    /// Makes this process use this home, runtime directory included. To be called before any thread is
    /// started.
    void applyToThisProcess() const;

private:
    QTemporaryDir m_directory;
};

} // namespace orvane::tests
