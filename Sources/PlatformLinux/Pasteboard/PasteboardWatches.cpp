#include "PlatformLinux/Pasteboard/PasteboardWatches.h"

#include <utility>

namespace orvane {

class PasteboardWatches::Watch : public PasteboardWatch {
public:
    Watch(std::shared_ptr<PasteboardWatches> watches, std::shared_ptr<Handler> handler)
        : m_watches(std::move(watches)), m_handler(std::move(handler))
    {
        ++m_watches->m_count;
    }
    ~Watch() override { --m_watches->m_count; }

private:
    std::shared_ptr<PasteboardWatches> m_watches;
    std::shared_ptr<Handler> m_handler;
};

std::unique_ptr<PasteboardWatch> PasteboardWatches::add(std::function<void()> handler)
{
    std::erase_if(m_handlers, [](const auto& former) { return former.expired(); });
    auto added = std::make_shared<Handler>(std::move(handler));
    m_handlers.push_back(added);
    return std::make_unique<Watch>(shared_from_this(), std::move(added));
}

void PasteboardWatches::announce()
{
    if (m_count == 0 || m_isQueued.exchange(true))
        return;
    m_runLoop.perform([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->callHandlers();
    });
}

void PasteboardWatches::callHandlers()
{
    m_isQueued = false;
    const auto handlers = m_handlers; // a handler may end its watch or begin another
    for (const auto& handler : handlers) {
        if (const auto call = handler.lock())
            (*call)();
    }
}

} // namespace orvane
