#include "PlatformLinux/WindowDrags/X11WindowDrags.h"

#include "Platform/Permissions.h"
#include "PlatformLinux/Accessibility/AXElements.h"
#include "PlatformLinux/EventMonitors/MouseButtons.h"
#include "PlatformLinux/EventMonitors/X11EventMonitors.h"
#include "PlatformLinux/Screens/X11Screens.h"
#include "PlatformLinux/WindowDrags/FocusWatch.h"
#include "PlatformLinux/WindowDrags/WindowPlaces.h"

#include <algorithm>
#include <deque>

#include <xcb/xinput.h>

namespace orvane {

namespace {

/// Presses that monitors haven't been told of yet wait here. More than these don't wait in practice; a lost
/// one costs the snap of one drag.
constexpr std::size_t mostPresses = 16;

Point pointOf(WindowPlaces::Corner corner)
{
    return {double(corner.x), double(corner.y)};
}

/// Selects, notes and asks from its beginning to its end.
class Ledger {
public:
    Ledger(const std::shared_ptr<ApplicationLink>& x, const std::function<void()>& changed)
        : m_x(x),
          m_changed(changed),
          m_substructure(x->link().select(x->root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY)),
          m_presses(x->link().selectInput(x->root(), XCB_INPUT_DEVICE_ALL_MASTER,
                                          XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS)),
          m_listener(x->listen([this](const xcb_generic_event_t& event) { take(event); })),
          m_focus(x, changed)
    {
        readPlaces();
        m_recovery = QObject::connect(x.get(), &ApplicationLink::serverIsBack, [this] { readPlaces(); });
    }
    ~Ledger() { QObject::disconnect(m_recovery); }
    Ledger(const Ledger&) = delete;
    Ledger& operator=(const Ledger&) = delete;

    [[nodiscard]] std::optional<FocusWatch::Focus> focus() const { return m_focus.focus(); }
    [[nodiscard]] const WindowPlaces::Corners& places() const { return m_places.corners(); }
    [[nodiscard]] std::optional<WindowPlaces::Corner> placeAtPress(xcb_timestamp_t press,
                                                                   xcb_window_t window) const
    {
        const auto found = std::ranges::find(m_atPress, press, &Press::time);
        return found == m_atPress.end() ? std::nullopt : cornerOf(found->places, window);
    }

private:
    struct Press {
        xcb_timestamp_t time = 0;
        WindowPlaces::Corners places;
    };

    void readPlaces()
    {
        m_places.readAll(*m_x);
        // For a button that was held before anybody watched, under the time of no press.
        m_atPress = {{XCB_CURRENT_TIME, m_places.corners()}};
    }

    void take(const xcb_generic_event_t& event)
    {
        m_focus.take(event);
        if ((event.response_type & 0x7F) == XCB_GE_GENERIC) {
            const auto& press = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
            const auto* xinput = m_x->link().extension(xcb_input_id);
            if (xinput && press.extension == xinput->major_opcode &&
                press.event_type == XCB_INPUT_RAW_BUTTON_PRESS && !isWheel(press.detail))
                notePress(press.time);
            return;
        }
        const auto moved = m_places.take(event, m_x->root());
        const auto focus = m_focus.focus();
        if (moved && focus && focus->top == *moved) {
            const auto changed = m_changed; // the call may end this object
            changed();
        }
    }

    void notePress(xcb_timestamp_t time)
    {
        m_atPress.push_back({time, m_places.corners()});
        if (m_atPress.size() > mostPresses)
            m_atPress.pop_front();
        // A press may be what gives a window the focus, and the state of the present one may have changed.
        m_focus.ask();
    }

    std::shared_ptr<ApplicationLink> m_x;
    std::function<void()> m_changed;
    XSelection m_substructure;
    XSelection m_presses;
    std::unique_ptr<ApplicationLink::Listener> m_listener;
    WindowPlaces m_places;
    std::deque<Press> m_atPress;
    FocusWatch m_focus;
    QMetaObject::Connection m_recovery;
};

} // namespace

struct X11WindowDrags::State {
    void announce() const
    {
        const std::vector<const Watch*> snapshot(watches.begin(), watches.end());
        for (const Watch* watch : snapshot) {
            if (std::ranges::find(watches, watch) != watches.end())
                call(*watch);
        }
    }
    static void call(const Watch& watch);

    std::vector<const Watch*> watches;
    std::unique_ptr<Ledger> ledger;
};

class X11WindowDrags::Watch : public WindowDragWatch {
public:
    Watch(std::shared_ptr<State> state, std::function<void()> changed)
        : m_state(std::move(state)),
          m_changed(std::make_shared<const std::function<void()>>(std::move(changed)))
    {
        m_state->watches.push_back(this);
    }
    ~Watch() override
    {
        std::erase(m_state->watches, this);
        if (m_state->watches.empty())
            m_state->ledger.reset();
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    void call() const
    {
        const auto changed = m_changed; // the handler may end its own watch
        (*changed)();
    }

private:
    std::shared_ptr<State> m_state;
    std::shared_ptr<const std::function<void()>> m_changed;
};

void X11WindowDrags::State::call(const Watch& watch)
{
    watch.call();
}

X11WindowDrags::X11WindowDrags(const X11EventMonitors& monitors, const X11Screens& screens,
                               Permissions& permissions)
    : m_monitors(monitors), m_screens(screens), m_permissions(permissions), m_state(std::make_shared<State>())
{
}

X11WindowDrags::~X11WindowDrags() = default;

bool X11WindowDrags::isWatching() const
{
    return m_state->ledger != nullptr;
}

std::unique_ptr<WindowDragWatch> X11WindowDrags::watch(std::function<void()> changed)
{
    auto watch = std::make_unique<Watch>(m_state, std::move(changed));
    const auto x = m_state->ledger ? nullptr : ApplicationLink::get();
    if (x && x->link().extension(xcb_input_id))
        m_state->ledger = std::make_unique<Ledger>(x, [state = m_state.get()] { state->announce(); });
    return watch;
}

std::optional<WindowDrags::Candidate> X11WindowDrags::candidate() const
{
    if (!m_state->ledger || !m_permissions.axIsProcessTrusted())
        return std::nullopt;
    const Ledger& ledger = *m_state->ledger;
    const auto focus = ledger.focus();
    if (!focus)
        return std::nullopt;
    const ScreenSpace& space = m_screens.space();
    Candidate candidate{.window = AXBody::ofWindow(AXBody::Kind::window, focus->window)};
    if (const auto corner = ledger.placeAtPress(m_monitors.lastLeftPress(), focus->top))
        candidate.initialPosition = space.axFromNative(pointOf(*corner));
    if (const auto corner = cornerOf(ledger.places(), focus->top))
        candidate.position = space.axFromNative(pointOf(*corner));
    return candidate;
}

} // namespace orvane
