#include "PlatformLinux/X11/XLink.h"

#include "PlatformLinux/Common/SignalFreeThread.h"
#include "PlatformLinux/X11/XExchange.h"

#include <algorithm>
#include <string>
#include <thread>
#include <utility>

#include <poll.h>
#include <sys/epoll.h>

#include <xcb/xcbext.h>

namespace orvane {

namespace {

/// Waits until one of the descriptors is ready. False when none is by the deadline.
bool pollUntil(std::span<pollfd> waits, Deadline deadline)
{
    const auto left = std::max(deadline - Deadline::clock::now(), Deadline::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    const timespec limit{seconds.count(), static_cast<long>((left - seconds).count())};
    return ::ppoll(waits.data(), waits.size(), &limit, nullptr) != 0; // a signal doesn't end the wait
}

/// The time for which one question more waits for a server that has been late.
constexpr auto aMoment = std::chrono::milliseconds(5);

/// The library's own connecting has no time limit, so it runs on a thread beside the one that waits for it,
/// and is abandoned when it is late.
class Connecting {
public:
    static std::shared_ptr<Connecting> start(const char* display)
    {
        auto made = std::make_shared<Connecting>();
        startSignalFreeThread([made, name = display ? std::optional<std::string>(display) : std::nullopt] {
            int screenNumber = 0;
            XcbConnection xcb(xcb_connect(name ? name->c_str() : nullptr, &screenNumber));
            const std::scoped_lock lock(made->m_mutex);
            if (made->m_isLeft)
                return; // nobody waits for the connection any more, so it ends here
            made->m_xcb = std::move(xcb);
            made->m_screenNumber = screenNumber;
            made->m_done.raise();
        }).detach();
        return made;
    }

    /// Null without a connection by the deadline, or when `cancellation` becomes readable.
    XcbConnection wait(Deadline deadline, int cancellation, int& screenNumber)
    {
        pollfd waits[] = {{m_done.descriptor(), POLLIN, 0}, {cancellation, POLLIN, 0}};
        while (pollUntil(waits, deadline) && waits[0].revents == 0 && waits[1].revents == 0)
            ;
        const std::scoped_lock lock(m_mutex);
        m_isLeft = true;
        screenNumber = m_screenNumber;
        return std::move(m_xcb);
    }

private:
    EventSignal m_done;
    std::mutex m_mutex;
    XcbConnection m_xcb;
    int m_screenNumber = 0;
    bool m_isLeft = false;
};

} // namespace

XLink::Opened XLink::open(const Request& request, Deadline deadline)
{
    int screenNumber = 0;
    XcbConnection xcb =
        Connecting::start(request.display)->wait(deadline, request.cancellation, screenNumber);
    if (!xcb)
        return {nullptr, XOutcome::late};
    if (xcb_connection_has_error(xcb.get()) != 0)
        return {nullptr, XOutcome::lost};
    std::unique_ptr<XLink> link(new XLink(std::move(xcb), screenNumber));
    link->m_cancellation = request.cancellation;
    const XOutcome outcome = link->begin(request, screenNumber, deadline);
    return {outcome == XOutcome::answered ? std::move(link) : nullptr, outcome};
}

XLink::XLink(XcbConnection xcb, int screenNumber)
    : m_xcb(std::move(xcb)),
      m_selections(std::make_shared<XSelections>(*this)),
      m_descriptor(::epoll_create1(EPOLL_CLOEXEC))
{
    auto screens = xcb_setup_roots_iterator(&setup());
    for (int i = 0; i < screenNumber && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    m_screen = screens.data;

    if (!m_descriptor)
        throw std::system_error(errno, std::generic_category(), "epoll_create1");
    for (const int source : {xcb_get_file_descriptor(m_xcb.get()), m_somethingIsThere.descriptor()}) {
        epoll_event readable{.events = EPOLLIN, .data = {}};
        if (::epoll_ctl(m_descriptor.get(), EPOLL_CTL_ADD, source, &readable) != 0)
            throw std::system_error(errno, std::generic_category(), "epoll_ctl");
    }
}

XLink::~XLink()
{
    m_selections->detach();
}

/// One round trip.
XOutcome XLink::begin(const Request& request, int screenNumber, Deadline deadline)
{
    // When the names are there, so are the extensions, which were asked for first.
    for (xcb_extension_t* extension : request.extensions)
        xcb_prefetch_extension_data(m_xcb.get(), extension);
    XExchange exchange(*this, deadline);
    m_atoms = XAtoms::intern(exchange, screenNumber);
    return exchange.isLate() ? exchange.outcome() : XOutcome::answered;
}

const xcb_query_extension_reply_t* XLink::extension(xcb_extension_t& extension) const
{
    const auto* data = xcb_get_extension_data(m_xcb.get(), &extension);
    return data && data->present ? data : nullptr;
}

std::uint32_t XLink::clientOf(std::uint32_t resource) const
{
    return resource & ~setup().resource_id_mask;
}

XcbReply<xcb_generic_event_t> XLink::nextEvent()
{
    const std::scoped_lock lock(m_queueMutex);
    if (m_queue.empty())
        readIn();
    XcbReply<xcb_generic_event_t> first;
    if (!m_queue.empty()) {
        first = std::move(m_queue.front());
        m_queue.pop_front();
    }
    noticeRecovery();
    if (!first)
        m_readerKnowsOfRecovery = true;
    ring();
    return first;
}

void XLink::takeEvents(const std::function<bool(const xcb_generic_event_t&)>& isWanted)
{
    const std::scoped_lock lock(m_queueMutex);
    readIn();
    std::erase_if(m_queue, [&](const auto& event) { return isWanted(*event); });
    ring();
}

/// Reads all events that there are, because the socket doesn't announce those that were read with the first.
void XLink::readIn()
{
    keep(xcb_poll_for_event(m_xcb.get()));
    keepWhatWasRead();
}

void XLink::flush()
{
    xcb_flush(m_xcb.get());
    const std::scoped_lock lock(m_queueMutex);
    keepWhatWasRead();
    ring();
}

/// A flush and a look for an answer read events and other answers as well, also the one that another thread
/// waits for.
void XLink::keepWhatWasRead()
{
    for (auto& [sequence, answer] : m_expected) {
        if (!answer)
            answer = poll(sequence);
    }
    while (auto* event = xcb_poll_for_queued_event(m_xcb.get()))
        keep(event);
    if (m_isWaiting)
        m_answersMayBeThere.raise();
}

void XLink::keep(xcb_generic_event_t* event)
{
    XcbReply<xcb_generic_event_t> owned(event);
    if (owned && owned->response_type != 0) // an error otherwise
        m_queue.push_back(std::move(owned));
}

/// Makes the descriptor readable while there is something to take.
void XLink::ring()
{
    const bool isThere =
        !m_queue.empty() || !m_readerKnowsOfRecovery ||
        std::ranges::any_of(m_expected, [](const auto& entry) { return entry.second.has_value(); });
    if (m_rings == isThere)
        return;
    m_rings = isThere;
    if (isThere)
        m_somethingIsThere.raise();
    else
        m_somethingIsThere.clear();
}

void XLink::expect(unsigned sequence)
{
    {
        const std::scoped_lock lock(m_queueMutex);
        m_expected.try_emplace(sequence);
    }
    flush();
}

std::optional<XLink::Answer> XLink::takeExpected(unsigned sequence)
{
    const std::scoped_lock lock(m_queueMutex);
    keepWhatWasRead();
    std::optional<Answer> answer;
    const auto found = m_expected.find(sequence);
    if (found != m_expected.end() && found->second) {
        answer = std::move(found->second);
        m_expected.erase(found);
    }
    ring();
    return answer;
}

void XLink::expectNoMore(unsigned sequence)
{
    const std::scoped_lock lock(m_queueMutex);
    const auto found = m_expected.find(sequence);
    if (found == m_expected.end())
        return;
    if (!found->second)
        xcb_discard_reply(m_xcb.get(), sequence);
    m_expected.erase(found);
    ring();
}

XSelection XLink::select(xcb_window_t window, std::uint32_t coreEvents)
{
    return {m_selections, {window, XSelectionPlace::core}, coreEvents};
}

XSelection XLink::selectInput(xcb_window_t window, std::uint16_t device, std::uint32_t inputEvents)
{
    return {m_selections, {window, device}, inputEvents};
}

XLink::Answer XLink::await(unsigned sequence, Deadline deadline)
{
    const std::scoped_lock turn(m_turnToWait);
    std::optional<Answer> answer = poll(sequence);
    if (!answer && awaitRecovery(std::min(deadline, within(aMoment)))) {
        m_isWaiting = true;
        sendAll(deadline);
        answer = poll(sequence);
        while (!answer && waitForInput(deadline))
            answer = poll(sequence);
        m_isWaiting = false;
    }
    {
        const std::scoped_lock lock(m_queueMutex);
        keepWhatWasRead();
        ring();
    }
    if (answer)
        return std::move(*answer);
    xcb_discard_reply(m_xcb.get(), sequence);
    noteOverdue();
    sendAll(Deadline::clock::now());
    return {};
}

std::optional<XLink::Answer> XLink::poll(unsigned sequence)
{
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (!xcb_poll_for_reply(m_xcb.get(), sequence, &reply, &error))
        return std::nullopt;
    const XcbReply<xcb_generic_error_t> owned(error);
    Answer answer{XOutcome::answered, XcbReply<void>(reply)};
    if (error) {
        answer.outcome = XOutcome::refused;
        answer.error = error->error_code;
    } else if (!reply && isLost()) {
        answer.outcome = XOutcome::lost;
    }
    return answer;
}

/// Has the answer to one more question tell that the server is back.
void XLink::noteOverdue()
{
    const std::scoped_lock lock(m_queueMutex);
    if (m_overdue)
        return;
    m_overdue = xcb_get_input_focus(m_xcb.get()).sequence;
    m_expected.try_emplace(*m_overdue);
}

/// A server that was held until now answers within a moment; false when it still owes an answer then.
bool XLink::awaitRecovery(Deadline deadline)
{
    while (isOverdue()) {
        if (!waitForInput(deadline))
            return false;
    }
    return true;
}

/// True while the server owes an earlier answer: until that comes no other will.
bool XLink::isOverdue()
{
    const std::scoped_lock lock(m_queueMutex);
    keepWhatWasRead();
    noticeRecovery();
    ring();
    return m_overdue.has_value();
}

void XLink::noticeRecovery()
{
    if (!m_overdue || !m_expected[*m_overdue])
        return;
    m_expected.erase(*m_overdue);
    m_overdue.reset();
    m_hasRecovered = true;
    m_readerKnowsOfRecovery = false;
}

bool XLink::takeRecovery()
{
    const std::scoped_lock lock(m_queueMutex);
    m_readerKnowsOfRecovery = true;
    ring();
    return std::exchange(m_hasRecovered, false);
}

/// The server doesn't read while another client holds it, and a full socket would block this thread.
void XLink::sendAll(Deadline deadline)
{
    pollfd waits[] = {{xcb_get_file_descriptor(m_xcb.get()), POLLOUT, 0}, {m_cancellation, POLLIN, 0}};
    if (pollUntil(waits, deadline) && waits[0].revents != 0)
        flush();
}

/// Waits for the socket, or for another thread that may have read from it. False when the deadline has
/// passed.
bool XLink::waitForInput(Deadline deadline)
{
    pollfd waits[] = {{xcb_get_file_descriptor(m_xcb.get()), POLLIN, 0},
                      {m_answersMayBeThere.descriptor(), POLLIN, 0},
                      {m_cancellation, POLLIN, 0}};
    if (!pollUntil(waits, deadline))
        return false;
    if (waits[1].revents != 0)
        m_answersMayBeThere.clear();
    return waits[2].revents == 0;
}

} // namespace orvane
