#include "Worker/RequestLoop.h"

#include "Platform/Protocols/WorkerProtocol.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <thread>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

namespace orvane::tests {

using namespace std::chrono_literals;
using namespace WorkerProtocol;

namespace {

struct RequestLoopTest : ::testing::Test {
    RequestLoopTest()
    {
        int both[2] = {};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, both), 0);
        ours = both[0];
        theirs = both[1];
    }
    ~RequestLoopTest() override
    {
        ::close(ours);
        ::close(theirs);
    }

    [[nodiscard]] bool send(std::span<const std::byte> bytes) const
    {
        return ::send(ours, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
    }

    [[nodiscard]] std::optional<Header> receive() const
    {
        std::array<std::byte, longestMessage> bytes{};
        const ssize_t count = ::recv(ours, bytes.data(), bytes.size(), 0);
        const auto message =
            decode(std::span(bytes).first(static_cast<std::size_t>(std::max<ssize_t>(count, 0))));
        return message ? std::optional(message->header) : std::nullopt;
    }

    int ours = -1;
    int theirs = -1;
};

} // namespace

TEST_F(RequestLoopTest, WithoutRequestsItEndsAndNoneCanBeSentAnyMore)
{
    RequestLoop::run(theirs, 1ms, 10s);
    EXPECT_FALSE(send(encode({.kind = Kind::measure}, {})));
    EXPECT_EQ(errno, EPIPE);
}

TEST_F(RequestLoopTest, WhatWasSentInTimeIsAnswered)
{
    ASSERT_TRUE(send(encode({.kind = Kind::measure, .number = 1}, {})));
    ASSERT_TRUE(send(encode({.kind = Kind::measure, .number = 2}, {})));
    RequestLoop::run(theirs, 0ms, 10s);
    EXPECT_EQ(receive().value_or(Header{}).number, 1U);
    EXPECT_EQ(receive().value_or(Header{}).number, 2U);
}

TEST_F(RequestLoopTest, EndsWithTheOtherSide)
{
    std::thread loop([this] { RequestLoop::run(theirs, 1h, 10s); });
    ::shutdown(ours, SHUT_RDWR);
    loop.join();
}

TEST_F(RequestLoopTest, MessagesThatAreTooLongAreRefusedAndTheNextIsAnswered)
{
    const std::vector<std::byte> tooLong(longestMessage + 100);
    ASSERT_TRUE(send(tooLong));
    ASSERT_TRUE(send(encode({.kind = Kind{77}, .number = 5}, {})));
    RequestLoop::run(theirs, 0ms, 10s);
    EXPECT_EQ(receive().value_or(Header{}).status, Status::refused);
    EXPECT_EQ(receive().value_or(Header{}).number, 5U);
}

TEST_F(RequestLoopTest, DescriptorsAreClosedAfterTheRequest)
{
    int pipe[2] = {};
    ASSERT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
    iovec data{};
    auto bytes = encode({.kind = Kind::measure}, {});
    data = {bytes.data(), bytes.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr* const part = CMSG_FIRSTHDR(&message);
    part->cmsg_level = SOL_SOCKET;
    part->cmsg_type = SCM_RIGHTS;
    part->cmsg_len = CMSG_LEN(sizeof(int));
    std::memcpy(CMSG_DATA(part), &pipe[1], sizeof(int));
    ASSERT_GT(::sendmsg(ours, &message, MSG_NOSIGNAL), 0);
    ::close(pipe[1]);
    RequestLoop::run(theirs, 0ms, 10s);
    EXPECT_EQ(receive().value_or(Header{}).status, Status::failed);
    char byte = 0;
    EXPECT_EQ(::read(pipe[0], &byte, 1), 0); // no writer is left
    ::close(pipe[0]);
}

} // namespace orvane::tests
