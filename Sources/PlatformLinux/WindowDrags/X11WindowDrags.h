// Places of windows on X11. The server announces presses of buttons and moves of windows in one stream, so
// the places that are known when a press is read are those at the press, however late it is read. Without a
// watch nothing is selected. Main thread.
#pragma once

#include "Platform/WindowDrags.h"

#include <memory>
#include <vector>

namespace orvane {

class Permissions;
class X11EventMonitors;
class X11Screens;

class X11WindowDrags : public WindowDrags {
public:
    /// All outlive this object.
    X11WindowDrags(const X11EventMonitors& monitors, const X11Screens& screens, Permissions& permissions);
    ~X11WindowDrags() override;
    X11WindowDrags(const X11WindowDrags&) = delete;
    X11WindowDrags& operator=(const X11WindowDrags&) = delete;

    [[nodiscard]] std::unique_ptr<WindowDragWatch> watch(std::function<void()> changed) override;
    [[nodiscard]] std::optional<Candidate> candidate() const override;

    [[nodiscard]] bool isWatching() const;

private:
    class Watch;
    struct State;

    const X11EventMonitors& m_monitors;
    const X11Screens& m_screens;
    Permissions& m_permissions;
    std::shared_ptr<State> m_state;
};

} // namespace orvane
