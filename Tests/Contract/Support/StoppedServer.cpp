#include "Contract/Support/StoppedServer.h"

#include "PlatformLinux/X11/XcbReply.h"

#include <chrono>
#include <csignal>
#include <stdexcept>

#include <sys/socket.h>

namespace orvane::tests {

namespace {

pid_t processOfServer()
{
    const XcbConnection xcb(xcb_connect(nullptr, nullptr));
    ucred peer{};
    socklen_t size = sizeof peer;
    if (::getsockopt(xcb_get_file_descriptor(xcb.get()), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0 ||
        peer.pid <= 1)
        throw std::runtime_error("the X server's process isn't known");
    return peer.pid;
}

} // namespace

StoppedServer::StoppedServer() : m_server(processOfServer())
{
    if (::kill(m_server, SIGSTOP) != 0)
        throw std::runtime_error("the X server can't be stopped");
    m_limit = std::thread([this] {
        std::unique_lock lock(m_mutex);
        m_goesOn.wait_for(lock, std::chrono::seconds(20), [this] { return !m_isStopped; });
        m_hadToGoOn = m_isStopped;
        m_isStopped = false;
        ::kill(m_server, SIGCONT);
    });
}

StoppedServer::~StoppedServer()
{
    (void)letGoOn();
}

bool StoppedServer::letGoOn()
{
    {
        const std::scoped_lock lock(m_mutex);
        m_isStopped = false;
    }
    m_goesOn.notify_all();
    if (m_limit.joinable())
        m_limit.join();
    return !m_hadToGoOn;
}

} // namespace orvane::tests
