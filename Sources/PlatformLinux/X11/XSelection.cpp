#include "PlatformLinux/X11/XSelection.h"

#include "PlatformLinux/X11/XLink.h"

#include <algorithm>

#include <xcb/xinput.h>

namespace orvane {

void XSelections::add(XSelectionPlace place, std::uint32_t mask)
{
    const std::scoped_lock lock(m_mutex);
    const std::uint32_t before = maskAt(place);
    m_masks.emplace(place, mask);
    change(place, before);
}

void XSelections::remove(XSelectionPlace place, std::uint32_t mask)
{
    const std::scoped_lock lock(m_mutex);
    const std::uint32_t before = maskAt(place);
    const auto [first, last] = m_masks.equal_range(place);
    const auto found = std::find_if(first, last, [mask](const auto& entry) { return entry.second == mask; });
    if (found != last)
        m_masks.erase(found);
    change(place, before);
    if (m_link)
        m_link->flush();
}

void XSelections::detach()
{
    const std::scoped_lock lock(m_mutex);
    m_link = nullptr;
}

std::uint32_t XSelections::maskAt(XSelectionPlace place) const
{
    std::uint32_t mask = 0;
    const auto [first, last] = m_masks.equal_range(place);
    for (auto at = first; at != last; ++at)
        mask |= at->second;
    return mask;
}

void XSelections::change(XSelectionPlace place, std::uint32_t before)
{
    const std::uint32_t mask = maskAt(place);
    if (!m_link || mask == before)
        return;
    if (place.device == XSelectionPlace::core) {
        xcb_change_window_attributes(m_link->xcb(), place.window, XCB_CW_EVENT_MASK, &mask);
        return;
    }
    const struct {
        xcb_input_event_mask_t header;
        std::uint32_t bits;
    } input{{static_cast<xcb_input_device_id_t>(place.device), 1}, mask};
    xcb_input_xi_select_events(m_link->xcb(), place.window, 1, &input.header);
}

XSelection::XSelection(std::shared_ptr<XSelections> owner, XSelectionPlace place, std::uint32_t mask)
    : m_owner(std::move(owner)), m_place(place), m_mask(mask)
{
    m_owner->add(m_place, m_mask);
}

XSelection::XSelection(XSelection&& other) noexcept
    : m_owner(std::move(other.m_owner)), m_place(other.m_place), m_mask(other.m_mask)
{
}

XSelection& XSelection::operator=(XSelection&& other) noexcept
{
    if (this != &other) {
        // The new selection is in place already, so events that both have selected come without a gap.
        reset();
        m_owner = std::move(other.m_owner);
        m_place = other.m_place;
        m_mask = other.m_mask;
    }
    return *this;
}

void XSelection::reset()
{
    if (const auto owner = std::move(m_owner))
        owner->remove(m_place, m_mask);
}

} // namespace orvane
