#include "PlatformLinux/Pasteboard/SelectionServer.h"

#include "PlatformLinux/X11/PropertyNumbers.h"

#include <algorithm>
#include <utility>

namespace orvane {

namespace {

/// The limit of pairs in one request for several targets; no honest program sends more.
constexpr qsizetype largestMultiple = qsizetype{64} * 1024;

} // namespace

SelectionServer::SelectionServer(SelectionConnection& connection, const PasteboardState& state)
    : m_connection(connection),
      m_state(state),
      m_targets(connection.atom("TARGETS")),
      m_multiple(connection.atom("MULTIPLE")),
      m_timestamp(connection.atom("TIMESTAMP")),
      m_atomPair(connection.atom("ATOM_PAIR")),
      m_incr(connection.atom("INCR"))
{
}

/// Uses the server's own time, so that it can't be too late; the server reports which it was. Returns when
/// the server has done it: a program that pastes from then on asks this one.
void SelectionServer::claim()
{
    xcb_set_selection_owner(m_connection.xcb(), m_connection.window(), m_connection.clipboard(),
                            XCB_CURRENT_TIME);
    (void)m_connection.clipboardHasOwner();
}

void SelectionServer::handle(const xcb_selection_request_event_t& event)
{
    if (m_state.isBeingWritten())
        m_held.push_back({event, std::chrono::steady_clock::now() + longestHold});
    else
        answer(event);
}

void SelectionServer::writingFinished()
{
    if (m_state.isBeingWritten())
        return;
    for (const Held& held : std::exchange(m_held, {}))
        answer(held.event);
}

void SelectionServer::answer(const xcb_selection_request_event_t& event)
{
    const auto contents = m_state.ownContents();
    // Old programs name no property and mean one with the target's name.
    const xcb_atom_t property = event.property == XCB_ATOM_NONE ? event.target : event.property;
    bool isGiven = false;
    if (contents && event.selection == m_connection.clipboard() && !isStale(event.time)) {
        isGiven = event.target == m_multiple ? putMultiple(*contents, event.requestor, property)
                                             : put(*contents, event.requestor, property, event.target);
    }
    notify(event, isGiven ? property : xcb_atom_t{XCB_ATOM_NONE});
}

/// True if the time is from before the content was ours. Times of the server wrap around.
bool SelectionServer::isStale(xcb_timestamp_t time) const
{
    return time != XCB_CURRENT_TIME && m_ownedSince != XCB_CURRENT_TIME &&
           static_cast<std::int32_t>(time - m_ownedSince) < 0;
}

bool SelectionServer::put(const PasteboardContents& contents, xcb_window_t requestor, xcb_atom_t property,
                          xcb_atom_t target)
{
    if (target == m_targets) {
        putTargets(contents, requestor, property);
        return true;
    }
    if (target == m_timestamp) {
        xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_INTEGER,
                            32, 1, &m_ownedSince);
        return true;
    }
    const QList<QByteArray> name = m_connection.names(&target, 1);
    auto data = name.isEmpty() ? std::nullopt : dataForTarget(contents, name.first());
    if (!data)
        return false;
    const xcb_atom_t type = m_connection.atom(data->type);
    if (data->bytes.size() > pieceSize) {
        putInPieces(requestor, property, type, std::move(data->bytes));
        return true;
    }
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, type, 8,
                        static_cast<std::uint32_t>(data->bytes.size()), data->bytes.constData());
    return true;
}

void SelectionServer::putTargets(const PasteboardContents& contents, xcb_window_t requestor,
                                 xcb_atom_t property)
{
    std::vector<xcb_atom_t> atoms{m_targets, m_multiple, m_timestamp};
    for (const TargetName& target : targetsOfContents(contents))
        atoms.push_back(m_connection.atom(target));
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

/// The requestor's property has pairs of a target and a property. Where the target can't be given, the
/// property becomes None in it.
bool SelectionServer::putMultiple(const PasteboardContents& contents, xcb_window_t requestor,
                                  xcb_atom_t property)
{
    const auto asked = m_connection.takeProperty(requestor, property, largestMultiple);
    if (!asked || asked->format != 32)
        return false;
    std::vector<xcb_atom_t> pairs =
        propertyNumbers(asked->bytes.constData(), static_cast<std::size_t>(asked->bytes.size()) / 8 * 8);
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        const bool isGiven = pairs[i] != m_multiple && pairs[i + 1] != XCB_ATOM_NONE &&
                             put(contents, requestor, pairs[i + 1], pairs[i]);
        if (!isGiven)
            pairs[i + 1] = XCB_ATOM_NONE;
    }
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, m_atomPair, 32,
                        static_cast<std::uint32_t>(pairs.size()), pairs.data());
    return true;
}

void SelectionServer::putInPieces(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                                  QByteArray bytes)
{
    endTransfers(
        [&](const Transfer& former) { return former.requestor == requestor && former.property == property; });
    XSelection listening = m_connection.link().select(requestor, XCB_EVENT_MASK_PROPERTY_CHANGE |
                                                                     XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const auto size = static_cast<std::uint32_t>(bytes.size());
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, m_incr, 32, 1, &size);
    m_transfers.push_back({requestor, property, type, std::move(bytes), 0,
                           std::chrono::steady_clock::now() + longestSilence, std::move(listening)});
}

/// Deleting the property asks for the next piece.
void SelectionServer::handle(const xcb_property_notify_event_t& event)
{
    if (event.state != XCB_PROPERTY_DELETE)
        return;
    const auto isMeant = [&](const Transfer& transfer) {
        return transfer.requestor == event.window && transfer.property == event.atom;
    };
    const auto found = std::ranges::find_if(m_transfers, isMeant);
    if (found != m_transfers.end() && !sendPiece(*found))
        endTransfers(isMeant);
}

/// Returns false for the last piece, which is empty.
bool SelectionServer::sendPiece(Transfer& transfer)
{
    const qsizetype size = std::min(pieceSize, transfer.bytes.size() - transfer.sent);
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, transfer.requestor, transfer.property,
                        transfer.type, 8, static_cast<std::uint32_t>(size),
                        transfer.bytes.constData() + transfer.sent);
    transfer.sent += size;
    transfer.until = std::chrono::steady_clock::now() + longestSilence;
    return size > 0;
}

void SelectionServer::handle(const xcb_destroy_notify_event_t& event)
{
    std::erase_if(m_transfers, [&](const Transfer& transfer) { return transfer.requestor == event.window; });
}

void SelectionServer::endTransfers(const std::function<bool(const Transfer&)>& which)
{
    std::erase_if(m_transfers, which);
}

void SelectionServer::notify(const xcb_selection_request_event_t& event, xcb_atom_t property)
{
    union {
        xcb_selection_notify_event_t notify;
        char whole[32]; // the size of every event in the protocol
    } sent{};
    sent.notify.response_type = XCB_SELECTION_NOTIFY;
    sent.notify.time = event.time;
    sent.notify.requestor = event.requestor;
    sent.notify.selection = event.selection;
    sent.notify.target = event.target;
    sent.notify.property = property;
    xcb_send_event(m_connection.xcb(), 0, event.requestor, XCB_EVENT_MASK_NO_EVENT, sent.whole);
}

std::optional<SelectionServer::Time> SelectionServer::deadline() const
{
    std::optional<Time> first;
    for (const Held& held : m_held)
        first = first ? std::min(*first, held.until) : held.until;
    for (const Transfer& transfer : m_transfers)
        first = first ? std::min(*first, transfer.until) : transfer.until;
    return first;
}

void SelectionServer::handleDeadline(Time now)
{
    endTransfers([&](const Transfer& transfer) { return now >= transfer.until; });
    const auto late = std::stable_partition(m_held.begin(), m_held.end(),
                                            [&](const Held& held) { return now < held.until; });
    const std::vector<Held> due(late, m_held.end());
    m_held.erase(late, m_held.end());
    for (const Held& held : due)
        answer(held.event);
}

} // namespace orvane
