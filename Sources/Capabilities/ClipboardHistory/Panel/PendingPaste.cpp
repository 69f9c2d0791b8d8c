#include "Capabilities/ClipboardHistory/Panel/PendingPaste.h"

#include "Platform/Platform.h"

#include <utility>

namespace orvane {

namespace {

/// The time that a program takes to come to the front.
constexpr std::chrono::milliseconds activationTime{80};

} // namespace

PendingPaste::PendingPaste(std::function<void()> ready)
    : m_ready(std::move(ready)),
      m_activation(platform().mainRunLoop.scheduleTimer(activationTime, RunLoop::Repeats::no,
                                                        [this] {
                                                            m_activation.reset();
                                                            goOn();
                                                        })),
      m_handing(platform().generalPasteboard.read({}, [this](const auto&) {
          m_handing.reset();
          goOn();
      }))
{
}

void PendingPaste::goOn()
{
    if (m_activation || m_handing)
        return;
    const auto ready = std::move(m_ready);
    ready();
}

} // namespace orvane
