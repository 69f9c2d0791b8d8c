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
    [[nodiscard]] bool isEnabled() const override;
    void invalidate() override;

    [[nodiscard]] bool wantsEvents() const { return m_isAttached && m_isEnabled && m_isValid; }
    [[nodiscard]] bool isAskedFor(EventType type, EventTaps::Location from) const
    {
        return wantsEvents() && (m_mask & eventMaskBit(type)) != 0 && m_location >= from;
    }
    [[nodiscard]] EventMask mask() const { return m_mask; }
    [[nodiscard]] EventTaps::Options options() const { return m_options; }
    /// Returns the callback's decision; for a tap that only listens, to let the event pass unchanged.
    EventTapDecision decide(Event& event);
    void hear(Event event) { m_callback(event.type, event, m_userInfo); }
    [[nodiscard]] bool isMarkedEnabled() const { return m_isEnabled; }
    void disable() { m_isEnabled = false; }
    void tellOfTimeout();

private:
    void updateOrDisable();

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
