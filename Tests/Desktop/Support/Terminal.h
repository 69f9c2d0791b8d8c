// A terminal that records what is typed and pasted into it.
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

    /// True once typed keys arrive; types some letters g for it.
    [[nodiscard]] bool getsKeys(Hardware& hardware) const;
    /// Returns all that has been typed so far.
    [[nodiscard]] QByteArray typed() const;
    [[nodiscard]] qint64 pid() const { return m_peer.pid(); }

private:
    [[nodiscard]] static QStringList arguments(const QString& output);

    QTemporaryDir m_folder;
    QString m_output = m_folder.filePath(QStringLiteral("typed"));
    Peer m_peer;
};

} // namespace orvane::tests
