// A terminal that writes what is typed and pasted into it, as it comes.
#pragma once

#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Peer.h"

#include <QByteArray>
#include <QTemporaryDir>

namespace orvane::tests {

/// An xterm in which Ctrl+Shift+V pastes the clipboard, as in other terminals: on its own it has no key
/// for that.
class Terminal {
public:
    Terminal();

    /// True once what is typed arrives; types a few letters g.
    [[nodiscard]] bool getsKeys(Hardware& hardware) const;
    /// All that has come so far.
    [[nodiscard]] QByteArray typed() const;
    [[nodiscard]] qint64 pid() const { return m_peer.pid(); }

private:
    [[nodiscard]] static QStringList arguments(const QString& output);

    QTemporaryDir m_folder;
    QString m_output = m_folder.filePath(QStringLiteral("typed"));
    Peer m_peer;
};

} // namespace orvane::tests
