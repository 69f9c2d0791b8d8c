// The watches of the pasteboard. However many copies are made before the main thread gets to it, it tells of
// them once.
#pragma once

#include "Platform/Pasteboard.h"
#include "Platform/RunLoop.h"

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

namespace orvane {

class PasteboardWatches : public std::enable_shared_from_this<PasteboardWatches> {
public:
    explicit PasteboardWatches(RunLoop& runLoop) : m_runLoop(runLoop) {}

    /// Main thread.
    [[nodiscard]] std::unique_ptr<PasteboardWatch> add(std::function<void()> handler);
    /// To be called when the count has changed. Any thread.
    void announce();

private:
    using Handler = std::function<void()>;
    class Watch;

    void callHandlers();

    RunLoop& m_runLoop;
    std::atomic<int> m_count{0}; // without a watch nothing is queued
    std::atomic<bool> m_isQueued{false};
    std::vector<std::weak_ptr<Handler>> m_handlers; // the watches own them
};

} // namespace orvane
