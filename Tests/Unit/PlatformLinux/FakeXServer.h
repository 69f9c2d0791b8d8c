// An X server of a few requests, for what a real one doesn't do when a test wants it: to send events right
// before an answer, to answer nothing, to go away. One client.
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

    /// For the client to connect to.
    [[nodiscard]] const std::string& display() const { return m_display; }

    /// From now on it reads nothing, or reads again and answers what has come.
    void hold();
    void release();
    /// Before the next answer it sends that many changes of properties, numbered on by their atom from 1.
    void sendWithNextAnswer(int count);
    /// At once.
    void send(int count);
    void hangUp();

    /// The core event masks that were asked for, in turn, and those of XInput 2.
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
