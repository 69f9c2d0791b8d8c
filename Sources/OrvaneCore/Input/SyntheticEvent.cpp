#include "OrvaneCore/Input/SyntheticEvent.h"

#include "Platform/EventTaps.h"
#include "Platform/Platform.h"

namespace orvane {

void SyntheticEvent::postKey(std::int64_t keycode, EventFlags flags)
{
    for (const EventType type : {EventType::keyDown, EventType::keyUp}) {
        Event event{.type = type, .flags = flags, .keycode = keycode};
        mark(event);
        platform().eventTaps.post(EventTaps::Location::hid, event);
    }
}

} // namespace orvane
