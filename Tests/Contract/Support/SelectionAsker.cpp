#include "Contract/Support/SelectionAsker.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>
#include <vector>

#include <poll.h>

namespace orvane::tests {

using namespace std::chrono_literals;

SelectionAsker::SelectionAsker()
    : m_connection(xcb_connect(nullptr, nullptr)), m_window(xcb_generate_id(m_connection.get()))
{
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection.get(), 0, m_window, screen->root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
}

xcb_atom_t SelectionAsker::atom(const QByteArray& name)
{
    const auto cookie =
        xcb_intern_atom(m_connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// Returns null after ten seconds without an event.
XcbReply<xcb_generic_event_t> SelectionAsker::nextEvent()
{
    const QDeadlineTimer end(10s);
    while (true) {
        xcb_flush(m_connection.get());
        if (XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())})
            return event;
        if (end.hasExpired())
            return nullptr;
        pollfd wait{xcb_get_file_descriptor(m_connection.get()), POLLIN, 0};
        ::poll(&wait, 1, static_cast<int>(end.remainingTime()));
    }
}

void SelectionAsker::begin(const QByteArray& target)
{
    xcb_convert_selection(m_connection.get(), m_window, atom("CLIPBOARD"), atom(target), atom("ASKED"),
                          XCB_CURRENT_TIME);
    xcb_flush(m_connection.get());
}

bool SelectionAsker::isAnswered()
{
    while (const auto event = nextEvent()) {
        if ((event->response_type & 0x7F) == XCB_SELECTION_NOTIFY)
            return reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property != XCB_ATOM_NONE;
    }
    return false;
}

xcb_window_t SelectionAsker::owner()
{
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection.get(), xcb_get_selection_owner(m_connection.get(), atom("CLIPBOARD")), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

bool SelectionAsker::awaitOtherOwner(xcb_window_t than)
{
    const QDeadlineTimer end(10s);
    while (owner() == than) {
        if (end.hasExpired())
            return false;
    }
    return true;
}

SelectionAsker::Property SelectionAsker::take(xcb_atom_t property)
{
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_connection.get(),
        xcb_get_property(m_connection.get(), 1, m_window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1u << 28),
        nullptr));
    if (!reply)
        return {XCB_ATOM_NONE, {}};
    return {reply->type, QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                    xcb_get_property_value_length(reply.get()))};
}

std::optional<QByteArray> SelectionAsker::receive(xcb_atom_t property)
{
    m_pieces = 0;
    const Property first = take(property);
    if (first.type == XCB_ATOM_NONE)
        return std::nullopt;
    if (first.type != atom("INCR"))
        return first.bytes;
    QByteArray whole;
    while (const auto event = nextEvent()) {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
        if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY || notify.atom != property ||
            notify.state != XCB_PROPERTY_NEW_VALUE)
            continue;
        const Property piece = take(property);
        if (piece.type == XCB_ATOM_NONE)
            continue;
        if (piece.bytes.isEmpty())
            return whole;
        ++m_pieces;
        whole += piece.bytes;
    }
    return std::nullopt;
}

std::optional<QByteArray> SelectionAsker::rest()
{
    return receive(atom("ASKED"));
}

std::optional<QByteArray> SelectionAsker::ask(const QByteArray& target, xcb_timestamp_t time)
{
    xcb_convert_selection(m_connection.get(), m_window, atom("CLIPBOARD"), atom(target), atom("ASKED"), time);
    return isAnswered() ? rest() : std::nullopt;
}

QList<QByteArray> SelectionAsker::targets()
{
    const QByteArray bytes = ask("TARGETS").value_or(QByteArray());
    std::vector<xcb_atom_t> atoms(static_cast<std::size_t>(bytes.size()) / 4);
    std::copy_n(bytes.constData(), atoms.size() * 4, reinterpret_cast<char*>(atoms.data()));
    QList<QByteArray> names;
    for (const xcb_atom_t each : atoms) {
        const XcbReply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(
            m_connection.get(), xcb_get_atom_name(m_connection.get(), each), nullptr));
        if (reply)
            names.append(
                QByteArray(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get())));
    }
    std::ranges::sort(names);
    return names;
}

QList<std::optional<QByteArray>> SelectionAsker::askMultiple(const QList<QByteArray>& targets)
{
    std::vector<xcb_atom_t> pairs;
    for (qsizetype i = 0; i < targets.size(); ++i) {
        pairs.push_back(atom(targets[i]));
        pairs.push_back(atom("ASKED_" + QByteArray::number(i)));
    }
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, atom("ASKED"), atom("ATOM_PAIR"),
                        32, static_cast<std::uint32_t>(pairs.size()), pairs.data());
    begin("MULTIPLE");
    if (!isAnswered())
        return {};
    const QByteArray told = take(atom("ASKED")).bytes;
    if (static_cast<std::size_t>(told.size()) != pairs.size() * 4)
        return {};
    std::copy_n(told.constData(), told.size(), reinterpret_cast<char*>(pairs.data()));
    QList<std::optional<QByteArray>> answers;
    for (std::size_t i = 1; i < pairs.size(); i += 2)
        answers.append(pairs[i] == XCB_ATOM_NONE ? std::nullopt : receive(pairs[i]));
    return answers;
}

} // namespace orvane::tests
