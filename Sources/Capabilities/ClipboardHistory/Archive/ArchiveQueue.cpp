#include "Capabilities/ClipboardHistory/Archive/ArchiveQueue.h"

#include "Capabilities/ClipboardHistory/Store/ClipboardStore.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"

#include <QSet>
#include <QUuid>

#include <deque>
#include <mutex>
#include <utility>

namespace orvane {

struct ArchiveQueue::State : std::enable_shared_from_this<State> {
    using Job = std::function<void()>;

    explicit State(HistoryArchive theArchive) : archive(std::move(theArchive)) {}

    void add(Job job);
    /// Returns an executor that keeps this object until its work is done.
    Executor executor();
    /// Work that later saves build on: none of them takes the place of one that waits in front of it.
    void addReading(Job job);
    void addSave(Snapshot snapshot);
    /// Returns the list on the disk without texts beyond the limits, and shortens the file if it had any.
    /// Called on the pool's thread.
    QList<ClipItem> loadWithinLimits();
    void endSaves();
    void addUnlisted(const QString& name);
    void removeUnlisted(const QString& name);

    const HistoryArchive archive;

private:
    struct Save {
        Snapshot snapshot;
        QSet<QString> unlisted;
    };

    void wake(bool isIdle);
    void run();
    void runSave(const std::shared_ptr<Save>& save);

    std::mutex m_mutex; // guards the following members
    std::deque<Job> m_jobs;
    std::shared_ptr<Save> m_replaceable; // the save that waits and may still become a newer one
    QSet<QString> m_unlisted;
    bool m_isRunning = false;
    bool m_isPurged = false;
};

void ArchiveQueue::State::add(Job job)
{
    const std::scoped_lock lock(m_mutex);
    m_jobs.push_back(std::move(job));
    wake(!std::exchange(m_isRunning, true));
}

Executor ArchiveQueue::State::executor()
{
    return [self = shared_from_this()](Job job) { self->add(std::move(job)); };
}

void ArchiveQueue::State::addReading(Job job)
{
    const std::scoped_lock lock(m_mutex);
    m_replaceable.reset();
    m_jobs.push_back(std::move(job));
    wake(!std::exchange(m_isRunning, true));
}

/// A newer list replaces the one that waits, and so comes before what was asked for in between: that is only
/// pictures, which go by the names of the newer list.
void ArchiveQueue::State::addSave(Snapshot snapshot)
{
    const std::scoped_lock lock(m_mutex);
    if (m_isPurged)
        return;
    Save newest{std::move(snapshot), m_unlisted};
    if (m_replaceable) {
        *m_replaceable = std::move(newest);
        return;
    }
    m_replaceable = std::make_shared<Save>(std::move(newest));
    m_jobs.emplace_back([this, save = m_replaceable] { runSave(save); });
    wake(!std::exchange(m_isRunning, true));
}

QList<ClipItem> ArchiveQueue::State::loadWithinLimits()
{
    ClipboardStore store{.items = archive.load()};
    if (!store.removeBeyondTextLimits())
        return store.items;
    {
        const std::scoped_lock lock(m_mutex);
        if (m_isPurged)
            return store.items;
    }
    archive.save(store.items);
    return store.items;
}

void ArchiveQueue::State::endSaves()
{
    const std::scoped_lock lock(m_mutex);
    m_isPurged = true;
}

void ArchiveQueue::State::addUnlisted(const QString& name)
{
    const std::scoped_lock lock(m_mutex);
    m_unlisted.insert(name);
}

void ArchiveQueue::State::removeUnlisted(const QString& name)
{
    const std::scoped_lock lock(m_mutex);
    m_unlisted.remove(name);
}

void ArchiveQueue::State::wake(bool isIdle)
{
    // Without a platform the process is about to end, and only releases what it held.
    if (isIdle && isPlatformInstalled())
        platform().mainRunLoop.performDetached([self = shared_from_this()] { self->run(); });
}

void ArchiveQueue::State::run()
{
    for (;;) {
        Job job;
        {
            const std::scoped_lock lock(m_mutex);
            if (m_jobs.empty()) {
                m_isRunning = false;
                return;
            }
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        job();
    }
}

void ArchiveQueue::State::runSave(const std::shared_ptr<Save>& save)
{
    Save taken;
    {
        const std::scoped_lock lock(m_mutex);
        if (m_replaceable == save)
            m_replaceable.reset();
        if (m_isPurged)
            return;
        taken = std::move(*save);
        // The pictures that were unlisted at the request may be in the list by now, but they aren't in this
        // one.
        taken.unlisted.unite(m_unlisted);
    }
    QList<ClipItem> items = taken.snapshot();
    archive.save(items);
    for (const QString& name : std::as_const(taken.unlisted))
        items.append(ClipItem{.kind = ClipKind::image, .imageFileName = name});
    archive.pruneImages(items);
}

class ArchiveQueue::Image : public UnlistedImage {
public:
    Image(const std::shared_ptr<State>& state, QString fileName)
        : m_state(state), m_fileName(std::move(fileName))
    {
        state->addUnlisted(m_fileName);
    }
    ~Image() override
    {
        const auto state = m_state.lock();
        if (m_isKept || !state)
            return;
        state->removeUnlisted(m_fileName);
        state->add([state = state.get(), name = m_fileName] { state->archive.removeImage(name); });
    }
    [[nodiscard]] QString fileName() const override { return m_fileName; }
    void keep() override
    {
        m_isKept = true;
        if (const auto state = m_state.lock())
            state->removeUnlisted(m_fileName);
    }

private:
    std::weak_ptr<State> m_state; // whose jobs may hold this
    QString m_fileName;
    bool m_isKept = false;
};

ArchiveQueue::ArchiveQueue(HistoryArchive archive) : m_state(std::make_shared<State>(std::move(archive))) {}

std::shared_ptr<const QList<ClipItem>> ArchiveQueue::load(std::function<void()> completion)
{
    auto items = std::make_shared<QList<ClipItem>>();
    m_state->addReading([state = m_state.get(), items, completion = std::move(completion),
                         &runLoop = platform().mainRunLoop] {
        *items = state->loadWithinLimits();
        runLoop.perform(completion);
    });
    return items;
}

void ArchiveQueue::save(Snapshot snapshot)
{
    m_state->addSave(std::move(snapshot));
}

PoolWork<std::unique_ptr<UnlistedImage>> ArchiveQueue::writeImage(QByteArray png)
{
    const QString name =
        QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper() + QStringLiteral(".png");
    // Shared, because a job can be copied; used by one thread at a time.
    auto image = std::make_shared<std::unique_ptr<UnlistedImage>>(std::make_unique<Image>(m_state, name));
    auto write = [archive = m_state->archive, name, png = std::move(png),
                  image = std::move(image)]() -> std::unique_ptr<UnlistedImage> {
        return archive.writeImage(name, png) ? std::move(*image) : nullptr;
    };
    return onExecutor(m_state->executor(), write);
}

PoolWork<void> ArchiveQueue::purge()
{
    m_state->endSaves();
    auto purge = [archive = m_state->archive] { archive.purge(); };
    return onExecutor(m_state->executor(), purge);
}

} // namespace orvane
