#include "FakeXServer.h"

#include <cstddef>
#include <cstring>
#include <span>
#include <string_view>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <xcb/xinput.h>

namespace {

/// The least set-up that a client accepts: one screen without depths.
struct SetUp {
    xcb_setup_t head;
    xcb_screen_t screen;
};

struct Reply {
    std::uint8_t type = 1;
    std::uint8_t detail = 0;
    std::uint16_t sequence = 0;
    std::uint32_t length = 0;
    std::uint8_t rest[24] = {};
};
static_assert(sizeof(Reply) == 32);

std::size_t padded(std::size_t size)
{
    return (size + 3) / 4 * 4;
}

} // namespace

FakeXServer::FakeXServer()
{
    m_listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    // Display numbers that no real server has. The address is abstract, so nothing is left behind.
    constexpr int first = 20'000;
    constexpr int count = 10'000;
    for (int i = 0; i < count && m_display.empty(); ++i) {
        const std::string number = std::to_string(first + (::getpid() + i) % count);
        const std::string path = "/tmp/.X11-unix/X" + number;
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path + 1, sizeof address.sun_path - 1);
        const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + path.size());
        if (::bind(m_listener, reinterpret_cast<const sockaddr*>(&address), length) == 0)
            m_display = ":" + number;
    }
    ::listen(m_listener, 1);
    m_thread = std::thread([this] { run(); });
}

FakeXServer::~FakeXServer()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isEnding = true;
    }
    m_released.notify_all();
    ::shutdown(m_listener, SHUT_RDWR);
    hangUp();
    m_thread.join();
    ::close(m_listener);
}

void FakeXServer::hold()
{
    const std::scoped_lock lock(m_mutex);
    m_isHeld = true;
}

void FakeXServer::release()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isHeld = false;
    }
    m_released.notify_all();
}

void FakeXServer::sendWithNextAnswer(int count)
{
    const std::scoped_lock lock(m_mutex);
    m_eventsToSend = count;
}

void FakeXServer::send(int count)
{
    const std::scoped_lock lock(m_mutex);
    sendEvents(count);
}

void FakeXServer::hangUp()
{
    if (m_client >= 0)
        ::shutdown(m_client, SHUT_RDWR);
}

std::vector<std::uint32_t> FakeXServer::coreMasks()
{
    const std::scoped_lock lock(m_mutex);
    return m_coreMasks;
}

std::vector<std::uint32_t> FakeXServer::inputMasks()
{
    const std::scoped_lock lock(m_mutex);
    return m_inputMasks;
}

void FakeXServer::run()
{
    m_client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (m_client < 0)
        return;
    if (setUp()) {
        while (handleRequest())
            ;
    }
    ::close(m_client.exchange(-1));
}

bool FakeXServer::setUp()
{
    xcb_setup_request_t request;
    if (!read(&request, sizeof request))
        return false;
    std::vector<std::uint8_t> authorization(padded(request.authorization_protocol_name_len) +
                                            padded(request.authorization_protocol_data_len));
    if (!read(authorization.data(), authorization.size()))
        return false;
    SetUp reply{};
    reply.head.status = 1;
    reply.head.protocol_major_version = 11;
    reply.head.length = (sizeof reply - 8) / 4;
    reply.head.resource_id_base = 0x200000;
    reply.head.resource_id_mask = 0x1FFFFF;
    reply.head.maximum_request_length = 0xFFFF;
    reply.head.roots_len = 1;
    reply.head.min_keycode = 8;
    reply.head.max_keycode = 255;
    reply.screen.root = 0x10;
    const std::scoped_lock lock(m_mutex);
    if (!m_isHeld)
        write(&reply, sizeof reply);
    return true;
}

bool FakeXServer::handleRequest()
{
    {
        std::unique_lock lock(m_mutex);
        m_released.wait(lock, [this] { return !m_isHeld || m_isEnding; });
        if (m_isEnding)
            return false;
    }
    std::vector<std::uint8_t> request(4);
    if (!read(request.data(), request.size()))
        return false;
    std::uint16_t length = 0;
    std::memcpy(&length, request.data() + 2, sizeof length);
    request.resize(std::size_t{length} * 4);
    if (!read(request.data() + 4, request.size() - 4))
        return false;
    std::unique_lock lock(m_mutex);
    ++m_sequence;
    m_released.wait(lock, [this] { return !m_isHeld || m_isEnding; });
    answer(request);
    return true;
}

void FakeXServer::answer(const std::vector<std::uint8_t>& request)
{
    Reply reply;
    reply.sequence = m_sequence;
    switch (request[0]) {
    case XCB_QUERY_EXTENSION: {
        std::uint16_t length = 0;
        std::memcpy(&length, request.data() + 4, sizeof length);
        const std::string_view name(reinterpret_cast<const char*>(request.data()) + 8, length);
        reply.rest[0] = name == "XInputExtension" ? 1 : 0;
        reply.rest[1] = xinputOpcode;
        break;
    }
    case XCB_INTERN_ATOM:
        ++m_lastInterned;
        std::memcpy(reply.rest, &m_lastInterned, sizeof m_lastInterned);
        break;
    case XCB_GET_INPUT_FOCUS:
        sendEvents(std::exchange(m_eventsToSend, 0));
        break;
    case XCB_CHANGE_WINDOW_ATTRIBUTES: {
        std::uint32_t mask = 0;
        std::memcpy(&mask, request.data() + sizeof(xcb_change_window_attributes_request_t), sizeof mask);
        m_coreMasks.push_back(mask);
        return;
    }
    case xinputOpcode: {
        std::uint32_t mask = 0;
        std::memcpy(&mask,
                    request.data() + sizeof(xcb_input_xi_select_events_request_t) +
                        sizeof(xcb_input_event_mask_t),
                    sizeof mask);
        m_inputMasks.push_back(mask);
        return;
    }
    default:
        return;
    }
    write(&reply, sizeof reply);
}

void FakeXServer::sendEvents(int count)
{
    for (int i = 0; i < count; ++i) {
        xcb_property_notify_event_t event{};
        event.response_type = XCB_PROPERTY_NOTIFY;
        event.sequence = m_sequence;
        event.atom = ++m_lastAtom;
        char wire[32] = {};
        std::memcpy(wire, &event, sizeof event);
        write(wire, sizeof wire);
    }
}

bool FakeXServer::read(void* bytes, std::size_t size)
{
    auto* to = static_cast<char*>(bytes);
    while (size > 0) {
        const ssize_t got = ::recv(m_client, to, size, 0);
        if (got <= 0)
            return false;
        to += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

void FakeXServer::write(const void* bytes, std::size_t size)
{
    [[maybe_unused]] const ssize_t written = ::send(m_client, bytes, size, MSG_NOSIGNAL);
}
