#include "PlatformLinux/Pasteboard/PasteboardThread.h"

#include "PlatformLinux/Pasteboard/PasteboardWatches.h"
#include "PlatformLinux/Pasteboard/SelectionConnection.h"
#include "PlatformLinux/Pasteboard/SelectionReader.h"
#include "PlatformLinux/Pasteboard/SelectionServer.h"

#include <algorithm>
#include <iterator>

#include <poll.h>

#include <xcb/xfixes.h>

namespace orvane {

namespace {

template <typename Specific>
const Specific& as(const xcb_generic_event_t& event)
{
    return reinterpret_cast<const Specific&>(event);
}

} // namespace

PasteboardThread::PasteboardThread(LogSink& log, std::shared_ptr<PasteboardState> state,
                                   std::shared_ptr<PasteboardWatches> watches)
    : m_log(log), m_state(std::move(state)), m_watches(std::move(watches)), m_thread([this] { run(); })
{
}

PasteboardThread::~PasteboardThread()
{
    m_isStopping = true;
    m_stop.raise();
    m_wake.raise();
    m_thread.join();
}

void PasteboardThread::claim()
{
    leave([this] {
        if (!m_server) {
            m_state->claimTold(); // the server won't announce it
            return;
        }
        m_server->claim();
        m_reader->ownerChanged();
    });
}

void PasteboardThread::writingFinished()
{
    leave([this] {
        if (!m_server)
            return;
        m_server->writingFinished();
        m_reader->writingFinished();
    });
}

PasteboardThread::ReadId PasteboardThread::read(const QStringList& types, Answer answer)
{
    const ReadId id = ++m_lastRead;
    leave([this, id, types, answer = std::move(answer)] {
        if (m_reader)
            m_reader->add(id, types, answer);
        else
            answerWithoutServer(types, answer);
    });
    return id;
}

/// This program can still read what it has copied itself.
void PasteboardThread::answerWithoutServer(const QStringList& types, const Answer& answer)
{
    auto own = m_state->ownContents();
    answer(own ? std::optional(SelectionContents{.contents = ofTypes(std::move(*own), types)})
               : std::nullopt);
}

void PasteboardThread::cancelRead(ReadId id)
{
    leave([this, id] {
        if (m_reader)
            m_reader->cancel(id);
    });
}

void PasteboardThread::leave(Message message)
{
    {
        const std::scoped_lock lock(m_messagesMutex);
        m_messages.push_back(std::move(message));
    }
    m_wake.raise();
}

void PasteboardThread::handleMessages()
{
    std::vector<Message> messages;
    {
        const std::scoped_lock lock(m_messagesMutex);
        messages.swap(m_messages);
    }
    for (const Message& message : messages)
        message();
}

void PasteboardThread::run()
{
    m_connection = SelectionConnection::open(m_stop.descriptor());
    if (m_connection) {
        m_server = std::make_unique<SelectionServer>(*m_connection, *m_state);
        m_reader = std::make_unique<SelectionReader>(*m_connection, *m_state);
        work();
        if (m_connection->isLost())
            log(QStringLiteral("The X server is gone; copies aren't shared with other programs any more."));
        m_reader.reset();
        m_server.reset();
        m_connection.reset();
    } else if (!m_isStopping) {
        log(QStringLiteral(
            "The clipboard can't be reached: there is no X server with the XFixes extension."));
    }
    workWithoutServer();
}

void PasteboardThread::work()
{
    while (!m_isStopping && !m_connection->isLost()) {
        while (handleNextEvent()) // first: a read refers to the owner that is known when it is asked for
            ;
        handleMessages();
        const auto now = std::chrono::steady_clock::now();
        m_reader->handleDeadline(now);
        m_server->handleDeadline(now);
        wait();
    }
}

void PasteboardThread::wait()
{
    m_connection->flush();
    auto first = m_reader->deadline();
    if (const auto other = m_server->deadline(); other && (!first || *other < *first))
        first = other;
    int limit = -1;
    if (first) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(*first - std::chrono::steady_clock::now());
        limit = static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
    }
    pollfd waits[] = {{m_connection->descriptor(), POLLIN, 0}, {m_wake.descriptor(), POLLIN, 0}};
    ::poll(waits, std::size(waits), limit);
    if (waits[1].revents != 0)
        m_wake.clear();
}

void PasteboardThread::workWithoutServer()
{
    while (!m_isStopping) {
        handleMessages();
        pollfd waits{m_wake.descriptor(), POLLIN, 0};
        ::poll(&waits, 1, -1);
        m_wake.clear();
    }
}

/// Returns false when there was no event.
bool PasteboardThread::handleNextEvent()
{
    const auto event = m_connection->nextEvent();
    if (!event)
        return false;
    const std::uint8_t type = event->response_type & 0x7F;
    switch (type) {
    case XCB_SELECTION_REQUEST:
        m_server->handle(as<xcb_selection_request_event_t>(*event));
        break;
    case XCB_SELECTION_NOTIFY:
        m_reader->handle(as<xcb_selection_notify_event_t>(*event));
        break;
    case XCB_PROPERTY_NOTIFY:
        m_server->handle(as<xcb_property_notify_event_t>(*event));
        m_reader->handle(as<xcb_property_notify_event_t>(*event));
        break;
    case XCB_DESTROY_NOTIFY:
        m_server->handle(as<xcb_destroy_notify_event_t>(*event));
        break;
    default:
        if (type == m_connection->selectionEvent())
            handleOwner(*event);
        break;
    }
    return true;
}

void PasteboardThread::handleOwner(const xcb_generic_event_t& event)
{
    const auto& change = as<xcb_xfixes_selection_notify_event_t>(event);
    if (change.selection != m_connection->clipboard())
        return;
    const bool hasEnded = change.subtype != XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
    if (!hasEnded && change.owner == m_connection->window()) {
        m_state->claimTold();
        m_server->noteOwnedSince(change.selection_timestamp);
    } else if (hasEnded) {
        m_reader->ownerChanged(); // it will never answer
    } else if (m_state->foreignCopyTold()) {
        m_watches->announce();
        m_reader->ownerChanged();
    }
}

void PasteboardThread::log(const QString& sentence)
{
    m_log.write(LogLevel::error, QStringLiteral("net.lindenrow.orvane"), QStringLiteral("Pasteboard"),
                sentence);
}

} // namespace orvane
