// An X server of a few requests, for situations that a real one can't be brought into: events right before an
// answer, no answer, a sudden end. One client.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <xcb/xcb.h>

class FakeXServer {
public:
    static constexpr std::uint8_t xinputOpcode = 131;

    FakeXServer();
    ~FakeXServer();

    /// The display for the client to connect to.
    [[nodiscard]] const std::string& display() const { return m_display; }

    /// From now on it reads nothing; the other one makes it read again and answer what has come.
    void hold();
    void release();
    /// Before the next answer it sends this many changes of properties, numbered by their atom from 1.
    void sendWithNextAnswer(int count);
    /// Sends them at once.
    void send(int count);
    void hangUp();

    /// The core event masks that were asked for, in order, and those of XInput 2.
    [[nodiscard]] std::vector<std::uint32_t> coreMasks();
    [[nodiscard]] std::vector<std::uint32_t> inputMasks();

private:
    void run();
    bool setUp();
    bool handleRequest();
    void answer(const std::vector<std::uint8_t>& request);
    void sendEvents(int count);
    bool read(void* bytes, std::size_t size);
    void write(const void* bytes, std::size_t size);

    std::string m_display;
    int m_listener = -1;
    std::atomic<int> m_client{-1};
    std::mutex m_mutex;
    std::condition_variable m_released;
    bool m_isHeld = false;
    bool m_isEnding = false;
    int m_eventsToSend = 0;
    std::uint32_t m_lastAtom = 0;
    std::uint16_t m_sequence = 0;
    std::uint32_t m_lastInterned = 100;
    std::vector<std::uint32_t> m_coreMasks;
    std::vector<std::uint32_t> m_inputMasks;
    std::thread m_thread;
};
