#include "Capabilities/MouseTools/DoubleCtrlSubscriber.h"

#include "Platform/Platform.h"
#include "Platform/RunLoop.h"

namespace orvane {

void DoubleCtrlSubscriber::hear(EventType type, const Event& event)
{
    if (type != EventType::flagsChanged || !m_control.isNewPress(event.flags))
        return;
    if (m_control.completesPair(platform().clock.uptime()))
        platform().mainRunLoop.perform(m_fire);
}

} // namespace orvane
