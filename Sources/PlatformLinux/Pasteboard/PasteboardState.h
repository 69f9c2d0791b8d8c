// The state that the main thread and the thread of the pasteboard share: the change count and what this
// program has put there. Any thread; no lock is held during a wait.
#pragma once

#include "Platform/Pasteboard.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>

namespace orvane {

class PasteboardState {
public:
    using Generation = std::uint64_t;

    [[nodiscard]] int changeCount() const { return m_count.load(); }

    /// Counts a copy of this program, before the server knows of it. Returns the new change count.
    int claim();
    /// To be called when the server has announced one of the claims.
    void claimTold();
    /// To be called when the server has announced another owner. Has no effect while a claim of ours is on
    /// its way, which takes the pasteboard from that owner. True when it counted.
    bool foreignCopyTold();

    /// Returns false when the pasteboard isn't ours any more.
    bool add(const QString& type, const QByteArray& data);
    bool addFiles(const QList<QUrl>& fileURLs);

    /// Returns all the content when it is ours.
    [[nodiscard]] std::optional<PasteboardContents> ownContents() const;

    /// To be called when the content is complete, so that others may see it.
    void finishWriting(Generation generation);
    [[nodiscard]] Generation generation() const;
    /// True if more may be added in the present turn of the run loop.
    [[nodiscard]] bool isBeingWritten() const;

private:
    bool addLocked(const QString& type, const QByteArray& data);

    mutable std::mutex m_mutex;
    std::atomic<int> m_count{0}; // written under the mutex
    int m_claimsUntold = 0;
    bool m_isOurs = false;
    bool m_isBeingWritten = false;
    Generation m_generation = 0;
    PasteboardContents m_contents;
};

} // namespace orvane
