// One event tap of XInputEventTaps. Main thread; ends before the taps' owner does.
#pragma once

#include "PlatformLinux/EventTap/XInputEventTaps.h"

namespace orvane {

class XInputEventTap : public EventTap {
public:
    XInputEventTap(XInputEventTaps& taps, EventTaps::Location location, EventTaps::Options options,
                   EventMask mask, EventTapCallback callback, void* userInfo)
        : m_taps(taps),
          m_location(location),
          m_options(options),
          m_mask(mask),
          m_callback(callback),
          m_userInfo(userInfo)
    {
    }
    ~XInputEventTap() override;

    void addToMainRunLoop() override;
    void removeFromMainRunLoop() override;
    void enable(bool enabled) override;
    bool isEnabled() const override;
    void invalidate() override;

    bool wantsEvents() const { return m_isAttached && m_isEnabled && m_isValid; }
    bool isAskedFor(EventType type, EventTaps::Location from) const
    {
        return wantsEvents() && (m_mask & eventMaskBit(type)) != 0 && m_location >= from;
    }
    EventMask mask() const { return m_mask; }
    /// The event as it goes on; nothing when this tap removes it.
    std::optional<Event> pass(Event event);
    bool isMarkedEnabled() const { return m_isEnabled; }
    void disableByTimeout() { m_isEnabled = false; }
    void tellOfTimeout();

private:
    XInputEventTaps& m_taps;
    EventTaps::Location m_location;
    EventTaps::Options m_options;
    EventMask m_mask;
    EventTapCallback m_callback;
    void* m_userInfo;
    bool m_isAttached = false;
    bool m_isEnabled = false;
    bool m_isValid = true;
};

} // namespace orvane
