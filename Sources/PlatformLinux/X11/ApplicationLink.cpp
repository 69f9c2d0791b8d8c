#include "PlatformLinux/X11/ApplicationLink.h"

#include "PlatformLinux/X11/X11Connection.h"
#include "PlatformLinux/X11/XkbProtocol.h"

#include <algorithm>
#include <array>
#include <utility>

#include <xcb/randr.h>
#include <xcb/res.h>
#include <xcb/screensaver.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

namespace orvane {

namespace {

/// The toolkit has waited for the server before, and without a time limit.
constexpr std::chrono::seconds longestOpening(5);

/// A client has to send its versions before it may ask for more. The server answers with what it has in any
/// case, and users of an extension ask whether it is there.
void nameVersions(XLink& link)
{
    const auto discard = [&](unsigned sequence) { xcb_discard_reply(link.xcb(), sequence); };
    // For a client of an older version a grab hides the raw events.
    if (link.extension(xcb_input_id))
        discard(xcb_input_xi_query_version(link.xcb(), 2, 2).sequence);
    if (link.extension(xcb_xfixes_id))
        discard(xcb_xfixes_query_version(link.xcb(), 5, 0).sequence);
    // A client that knows XKB doesn't get the event that all others get whenever another keyboard is used.
    if (link.extension(xcb_xkb_id))
        discard(xcb_xkb_use_extension(link.xcb(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION).sequence);
}

} // namespace

std::shared_ptr<ApplicationLink> ApplicationLink::get()
{
    static std::weak_ptr<ApplicationLink> shared;
    auto link = shared.lock();
    if (link && !link->m_link->isLost())
        return link;
    if (!X11Connection::ofApplication())
        return nullptr;
    static const std::array extensions{&xcb_input_id, &xcb_xkb_id, &xcb_xfixes_id,
                                       &xcb_randr_id, &xcb_res_id, &xcb_screensaver_id};
    auto opened = XLink::open({.extensions = extensions}, within(longestOpening));
    if (!opened.link)
        return nullptr;
    link.reset(new ApplicationLink(std::move(opened.link)));
    shared = link;
    return link;
}

ApplicationLink::ApplicationLink(std::unique_ptr<XLink> link)
    : m_link(std::move(link)), m_notifier(m_link->descriptor(), QSocketNotifier::Read)
{
    nameVersions(*m_link);
    m_link->flush();
    connect(&m_notifier, &QSocketNotifier::activated, this, &ApplicationLink::read);
}

ApplicationLink::~ApplicationLink() = default;

std::unique_ptr<ApplicationLink::Listener> ApplicationLink::listen(Handler handler)
{
    return std::make_unique<Listener>(shared_from_this(), std::move(handler));
}

ApplicationLink::Listener::Listener(const std::shared_ptr<ApplicationLink>& link, Handler handler)
    : m_link(link), m_handler(std::make_shared<const Handler>(std::move(handler)))
{
    link->m_listeners.push_back(this);
}

ApplicationLink::Listener::~Listener()
{
    if (const auto link = m_link.lock())
        std::erase(link->m_listeners, this);
}

void ApplicationLink::read()
{
    const auto self = shared_from_this(); // a handler may release the last reference
    while (const auto event = m_link->nextEvent())
        dispatch(*event);
    giveAnswers();
    if (m_link->takeRecovery())
        Q_EMIT serverIsBack();
    if (m_link->isLost())
        m_notifier.setEnabled(false);
}

void ApplicationLink::dispatch(const xcb_generic_event_t& event)
{
    const auto snapshot = m_listeners;
    for (const Listener* listener : snapshot) {
        if (std::ranges::find(m_listeners, listener) == m_listeners.end())
            continue;
        const auto handler = listener->m_handler; // the handler may end its listener
        (*handler)(event);
    }
}

void ApplicationLink::whenAnswered(unsigned sequence, std::function<void(XLink::Answer)> then)
{
    m_questions.emplace(sequence, std::move(then));
    m_link->expect(sequence);
}

void ApplicationLink::forget(unsigned sequence)
{
    if (m_questions.erase(sequence) != 0)
        m_link->expectNoMore(sequence);
}

void ApplicationLink::giveAnswers()
{
    for (auto at = m_questions.begin(); at != m_questions.end();) {
        auto answer = m_link->takeExpected(at->first);
        if (!answer) {
            ++at;
            continue;
        }
        const auto then = std::move(at->second);
        m_questions.erase(at);
        then(std::move(*answer));
        at = m_questions.begin(); // the call may have added or removed others
    }
}

xcb_timestamp_t ApplicationLink::serverTime()
{
    if (m_clock == XCB_WINDOW_NONE) {
        m_clock = xcb_generate_id(xcb());
        const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(xcb(), 0, m_clock, root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    }
    xcb_change_property(xcb(), XCB_PROP_MODE_APPEND, m_clock, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0,
                        nullptr);
    exchange().synchronize();
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    m_link->takeEvents([&](const xcb_generic_event_t& event) {
        const auto& told = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY || told.window != m_clock)
            return false;
        time = told.time;
        return true;
    });
    return time;
}

std::optional<PointerState> ApplicationLink::pointer()
{
    return pointerState(exchange().reply<xcb_query_pointer_reply_t>(xcb_query_pointer(xcb(), root())).get());
}

std::optional<PointerState> pointerState(const xcb_query_pointer_reply_t* reply)
{
    if (!reply || !reply->same_screen)
        return std::nullopt;
    return PointerState{reply->root_x, reply->root_y, reply->mask, reply->child};
}

EventFlags eventFlagsOfXState(unsigned state)
{
    EventFlags flags = 0;
    if (state & XCB_MOD_MASK_SHIFT)
        flags |= eventFlag::shift;
    if (state & XCB_MOD_MASK_CONTROL)
        flags |= eventFlag::control;
    if (state & XCB_MOD_MASK_1)
        flags |= eventFlag::option;
    if (state & XCB_MOD_MASK_4)
        flags |= eventFlag::command;
    if (state & XCB_MOD_MASK_LOCK)
        flags |= eventFlag::alphaShift;
    return flags;
}

void sendToWindowManager(xcb_connection_t* xcb, xcb_window_t root, xcb_window_t window, xcb_atom_t type,
                         const std::array<std::uint32_t, 5>& data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(xcb, 0, root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

} // namespace orvane
