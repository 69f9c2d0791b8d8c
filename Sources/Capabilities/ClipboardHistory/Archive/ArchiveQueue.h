// The archive's work on the disk, one piece after the other on a thread of the pool. Main thread.
//
// What was asked for is done also when this object ends, and before the program does. Of saves that wait only
// the newest is done; a save that is asked for after a loading comes after it.
#pragma once

#include "Capabilities/ClipboardHistory/Archive/HistoryArchive.h"
#include "OrvaneCore/Base/Pool.h"

#include <functional>
#include <memory>

namespace orvane {

/// The file of a picture whose entry isn't in the list yet, so that pruning leaves it. Unless it's kept, the
/// file is removed with this object. Main thread.
class UnlistedImage {
public:
    virtual ~UnlistedImage() = default;
    [[nodiscard]] virtual QString fileName() const = 0;
    /// To be called when the entry is in the list, and so in all saves that are asked for from now on.
    virtual void keep() = 0;
};

class ArchiveQueue {
public:
    /// Returns the list to be saved; called on the pool's thread, after everything that was asked for before.
    using Snapshot = std::function<QList<ClipItem>()>;

    explicit ArchiveQueue(HistoryArchive archive);

    /// Returns the list on the disk, without texts beyond the limits; empty when it can't be read. The list
    /// is there when `completion` is called, in a later turn of the run loop, and for snapshots of saves that
    /// are asked for from now on.
    std::shared_ptr<const QList<ClipItem>> load(std::function<void()> completion);
    /// Saves, then prunes the pictures.
    void save(Snapshot snapshot);
    /// Writes a picture under a new name. Null when the file couldn't be written.
    [[nodiscard]] PoolWork<std::unique_ptr<UnlistedImage>> writeImage(QByteArray png);
    /// Removes everything and ends the saving: no save that waits or comes later is done.
    [[nodiscard]] PoolWork<void> purge();

private:
    struct State;
    class Image;

    std::shared_ptr<State> m_state;
};

} // namespace orvane
