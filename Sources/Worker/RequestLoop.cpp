#include "Worker/RequestLoop.h"

#include "Worker/RequestHandler.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

namespace orvane::RequestLoop {

namespace {

struct Request {
    std::vector<std::byte> bytes;
    std::vector<int> descriptors;
};

void takeDescriptors(msghdr& message, Request& request)
{
    for (cmsghdr* part = CMSG_FIRSTHDR(&message); part; part = CMSG_NXTHDR(&message, part)) {
        if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_RIGHTS)
            continue;
        const std::size_t count = (part->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        const std::size_t before = request.descriptors.size();
        request.descriptors.resize(before + count);
        std::memcpy(request.descriptors.data() + before, CMSG_DATA(part), count * sizeof(int));
    }
}

/// False when there is none and there won't be one.
bool receive(int descriptor, int flags, Request& request)
{
    // One byte and one descriptor more than are allowed, so that too many are seen.
    request.bytes.resize(WorkerProtocol::longestMessage + 1);
    iovec data{request.bytes.data(), request.bytes.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int) * (WorkerProtocol::mostDescriptors + 1))>
        control{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    ssize_t count = 0;
    do
        count = ::recvmsg(descriptor, &message, flags | MSG_CMSG_CLOEXEC);
    while (count < 0 && errno == EINTR);
    if (count <= 0)
        return false;
    takeDescriptors(message, request);
    request.bytes.resize(static_cast<std::size_t>(count));
    return true;
}

bool isReadable(int descriptor, std::chrono::milliseconds limit)
{
    pollfd wait{descriptor, POLLIN, 0};
    int ready = 0;
    do
        ready = ::poll(&wait, 1, static_cast<int>(limit.count()));
    while (ready < 0 && errno == EINTR);
    return ready > 0;
}

bool send(int descriptor, const std::vector<std::byte>& answer)
{
    iovec data{const_cast<std::byte*>(answer.data()), answer.size()}; // NOLINT(*-const-cast): it is only read
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    return ::sendmsg(descriptor, &message, MSG_NOSIGNAL) == static_cast<ssize_t>(answer.size());
}

} // namespace

void run(int descriptor, std::chrono::milliseconds idleLimit, std::chrono::seconds requestLimit)
{
    bool isLast = false;
    while (!isLast) {
        if (!isReadable(descriptor, idleLimit)) {
            // After this the other side can't send any more and knows it; what it has sent before is
            // answered.
            ::shutdown(descriptor, SHUT_RD);
            isLast = true;
        }
        Request request;
        if (!receive(descriptor, isLast ? MSG_DONTWAIT : 0, request))
            return;
        ::alarm(static_cast<unsigned>(requestLimit.count()));
        const auto answer = RequestHandler::answer(request.bytes, request.descriptors);
        ::alarm(0);
        std::ranges::for_each(request.descriptors, &::close);
        if (!send(descriptor, answer))
            return;
    }
}

} // namespace orvane::RequestLoop
