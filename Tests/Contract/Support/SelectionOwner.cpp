#include "Contract/Support/SelectionOwner.h"

#include "PlatformLinux/X11/XcbReply.h"

#include <QHash>
#include <QList>

#include <algorithm>
#include <future>
#include <iterator>
#include <optional>

#include <poll.h>
#include <unistd.h>

namespace orvane::tests {

struct SelectionOwner::Client {
    struct Transfer {
        xcb_window_t window;
        xcb_atom_t property, type;
        QByteArray bytes;
        qsizetype sent = 0;
    };

    Client() : connection(xcb_connect(nullptr, nullptr))
    {
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(x())).data;
        window = xcb_generate_id(x());
        xcb_create_window(x(), 0, window, screen->root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(x(), window, atom("CLIPBOARD"), XCB_CURRENT_TIME);
        // The reply comes after the owner is set.
        const XcbReply<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(x(), xcb_get_selection_owner(x(), atom("CLIPBOARD")), nullptr));
    }

    [[nodiscard]] xcb_connection_t* x() const { return connection.get(); }

    xcb_atom_t atom(const QByteArray& name)
    {
        const auto cookie =
            xcb_intern_atom(x(), 0, static_cast<std::uint16_t>(name.size()), name.constData());
        const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(x(), cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    [[nodiscard]] QByteArray name(xcb_atom_t atom) const
    {
        const XcbReply<xcb_get_atom_name_reply_t> reply(
            xcb_get_atom_name_reply(x(), xcb_get_atom_name(x(), atom), nullptr));
        return reply ? QByteArray(xcb_get_atom_name_name(reply.get()),
                                  xcb_get_atom_name_name_length(reply.get()))
                     : QByteArray();
    }

    void put(const xcb_selection_request_event_t& event, xcb_atom_t type, const QByteArray& bytes)
    {
        xcb_change_property(x(), XCB_PROP_MODE_REPLACE, event.requestor, event.property, type, 8,
                            static_cast<std::uint32_t>(bytes.size()), bytes.constData());
    }

    void notify(const xcb_selection_request_event_t& event, xcb_atom_t property)
    {
        char sent[32] = {};
        auto& notify = reinterpret_cast<xcb_selection_notify_event_t&>(sent);
        notify.response_type = XCB_SELECTION_NOTIFY;
        notify.time = event.time;
        notify.requestor = event.requestor;
        notify.selection = event.selection;
        notify.target = event.target;
        notify.property = property;
        xcb_send_event(x(), 0, event.requestor, 0, sent);
    }

    XcbConnection connection;
    xcb_window_t window = 0;
    QList<Transfer> transfers;
};

SelectionOwner::SelectionOwner(QMap<QByteArray, QByteArray> data, Manner manner, qsizetype pieceSize)
    : m_data(std::move(data)), m_manner(manner), m_pieceSize(pieceSize)
{
    if (::pipe(m_wake) != 0)
        qFatal("No pipe can be made");
    std::promise<void> owns;
    auto owned = owns.get_future();
    m_thread = std::thread([this, owns = std::move(owns)]() mutable {
        Client client;
        owns.set_value();
        run(client);
    });
    owned.wait();
}

SelectionOwner::~SelectionOwner()
{
    m_isStopping = true;
    [[maybe_unused]] const auto written = ::write(m_wake[1], "x", 1);
    m_thread.join();
    ::close(m_wake[0]);
    ::close(m_wake[1]);
}

void SelectionOwner::run(Client& client)
{
    const xcb_atom_t incr = client.atom("INCR");
    const auto request = [&](const xcb_selection_request_event_t& event) {
        ++m_requests;
        if (m_manner == Manner::silent)
            return;
        const QByteArray target = client.name(event.target);
        if (target == "TARGETS" && m_manner != Manner::withoutTargets) {
            std::vector<xcb_atom_t> atoms{event.target};
            for (const QByteArray& name : m_data.keys())
                atoms.push_back(client.atom(name));
            xcb_change_property(client.x(), XCB_PROP_MODE_REPLACE, event.requestor, event.property,
                                XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(atoms.size()), atoms.data());
        } else if (m_manner == Manner::onlyTargets) {
            return;
        } else if (!m_data.contains(target) || m_manner == Manner::refusesData) {
            client.notify(event, XCB_ATOM_NONE);
            return;
        } else if (m_manner == Manner::whole || m_manner == Manner::withoutTargets) {
            client.put(event, event.target, m_data[target]);
        } else if (m_manner == Manner::takesItBack) {
            client.put(event, event.target, m_data[target]);
            xcb_delete_property(client.x(), event.requestor, event.property);
        } else {
            const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(client.x(), event.requestor, XCB_CW_EVENT_MASK, &mask);
            const auto size = static_cast<std::uint32_t>(std::min<qsizetype>(m_data[target].size(), 1000));
            xcb_change_property(client.x(), XCB_PROP_MODE_REPLACE, event.requestor, event.property, incr, 32,
                                1, &size);
            client.transfers.append({event.requestor, event.property, event.target, m_data[target]});
        }
        client.notify(event, event.property);
    };
    // Returns false when the program is to end.
    const auto piece = [&](const xcb_property_notify_event_t& event) {
        const auto found = std::ranges::find_if(client.transfers, [&](const Client::Transfer& transfer) {
            return transfer.window == event.window && transfer.property == event.atom;
        });
        if (event.state != XCB_PROPERTY_DELETE || found == client.transfers.end())
            return true;
        if (m_manner != Manner::pieces && found->sent > 0)
            return m_manner != Manner::diesMidway;
        const qsizetype size = std::min(m_pieceSize, found->bytes.size() - found->sent);
        xcb_change_property(client.x(), XCB_PROP_MODE_REPLACE, found->window, found->property, found->type, 8,
                            static_cast<std::uint32_t>(size), found->bytes.constData() + found->sent);
        found->sent += size;
        ++m_pieces;
        if (size == 0)
            client.transfers.erase(found);
        return true;
    };
    while (!m_isStopping) {
        XcbReply<xcb_generic_event_t> event(xcb_poll_for_event(client.x()));
        if (!event) {
            xcb_flush(client.x());
            event.reset(xcb_poll_for_queued_event(client.x())); // the flush may have read it
        }
        if (!event) {
            pollfd waits[] = {{xcb_get_file_descriptor(client.x()), POLLIN, 0}, {m_wake[0], POLLIN, 0}};
            ::poll(waits, std::size(waits), -1);
            continue;
        }
        const int type = event->response_type & 0x7F;
        if (type == XCB_SELECTION_REQUEST)
            request(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
        else if (type == XCB_PROPERTY_NOTIFY &&
                 !piece(reinterpret_cast<const xcb_property_notify_event_t&>(*event)))
            return;
    }
}

} // namespace orvane::tests
