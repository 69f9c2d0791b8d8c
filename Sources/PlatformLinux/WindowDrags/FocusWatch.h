// The window that has the focus by the window manager's word, and the child of the root window that holds it.
// Asked for when the focus changes, and whenever it is told to; nobody waits for the answers. Main thread.
#pragma once

#include "PlatformLinux/X11/ApplicationLink.h"

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

class FocusWatch {
public:
    struct Focus {
        xcb_window_t window = XCB_WINDOW_NONE;
        /// The window itself where the window manager puts no frame around it.
        xcb_window_t top = XCB_WINDOW_NONE;
        friend bool operator==(const Focus&, const Focus&) = default;
    };

    /// Calls `changed` when there is another answer.
    FocusWatch(std::shared_ptr<ApplicationLink> x, std::function<void()> changed);
    ~FocusWatch();
    FocusWatch(const FocusWatch&) = delete;
    FocusWatch& operator=(const FocusWatch&) = delete;

    /// Returns the last answer. Absent while no window has the focus that a person could drag: the desktop, a
    /// panel and a full-screen window are none.
    [[nodiscard]] const std::optional<Focus>& focus() const { return m_focus; }
    /// To be called with each event of the link.
    void take(const xcb_generic_event_t& event);
    void ask();

private:
    /// The questions about one window.
    struct Question {
        xcb_get_property_cookie_t managed{};
        xcb_get_property_cookie_t states{};
        xcb_get_property_cookie_t types{};
    };

    void expect(unsigned sequence, void (FocusWatch::*then)(const XLink::Answer&));
    void forget();
    void askAboutWindow(const XLink::Answer& active);
    void judgeWindow(const XLink::Answer& tree);
    void goUp(const XLink::Answer& tree);
    void settle(std::optional<Focus> focus);

    std::shared_ptr<ApplicationLink> m_x;
    std::function<void()> m_changed;
    XSelection m_selection;
    std::optional<Focus> m_focus;
    /// The answer that is being put together.
    Focus m_next;
    std::optional<unsigned> m_pending;
    std::optional<Question> m_question;
};

} // namespace orvane
