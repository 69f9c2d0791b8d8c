// The events of windows and devices that a link has asked for. Several owners may select on one window: the
// link gets what any of them wants.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

namespace orvane {

class XLink;

/// The place of a selection. Core events have no device.
struct XSelectionPlace {
    static constexpr std::uint32_t core = 0x10000;

    xcb_window_t window = XCB_WINDOW_NONE;
    std::uint32_t device = core;
    // The check takes the 0 of the comparison for a pointer.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    friend auto operator<=>(const XSelectionPlace&, const XSelectionPlace&) = default;
};

/// The masks of one link. Any thread.
class XSelections {
public:
    explicit XSelections(XLink& link) : m_link(&link) {}

    void add(XSelectionPlace place, std::uint32_t mask);
    void remove(XSelectionPlace place, std::uint32_t mask);
    /// To be called when the link ends, and its selections with it.
    void detach();

private:
    [[nodiscard]] std::uint32_t maskAt(XSelectionPlace place) const;
    void change(XSelectionPlace place, std::uint32_t before);

    std::mutex m_mutex;
    XLink* m_link;
    /// One mask for each owner.
    std::multimap<XSelectionPlace, std::uint32_t> m_masks;
};

/// Holds a selection until its end. May outlive the link. An empty one holds nothing.
class XSelection {
public:
    XSelection() = default;
    XSelection(std::shared_ptr<XSelections> owner, XSelectionPlace place, std::uint32_t mask);
    ~XSelection() { reset(); }
    XSelection(XSelection&& other) noexcept;
    XSelection& operator=(XSelection&& other) noexcept;

    void reset();
    explicit operator bool() const { return m_owner != nullptr; }

private:
    std::shared_ptr<XSelections> m_owner;
    XSelectionPlace m_place;
    std::uint32_t m_mask = 0;
};

} // namespace orvane
