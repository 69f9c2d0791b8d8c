#include "Fakes/FakeSound.h"
#include "PlatformLinux/Session/XkbSound.h"
#include "PlatformLinux/X11/XcbReply.h"
#include "PlatformLinux/X11/XkbProtocol.h"
#include "Support/Eventually.h"

#include <gmock/gmock.h>

namespace orvane::tests {
namespace {

/// A listener to the bells of the session.
class FakeEar {
public:
    Sound& sound() { return m_sound; }
    int bells() { return m_sound.beeps; }

private:
    FakeSound m_sound;
};

class ServerEar {
public:
    ServerEar()
    {
        const auto use = xcb_xkb_use_extension(m_connection.get(), 1, 0);
        const XcbReply<xcb_xkb_use_extension_reply_t> used(
            xcb_xkb_use_extension_reply(m_connection.get(), use, nullptr));
        const auto* extension = xcb_get_extension_data(m_connection.get(), &xcb_xkb_id);
        m_firstEvent = extension->first_event;
        constexpr std::uint16_t bell = XCB_XKB_EVENT_TYPE_BELL_NOTIFY;
        xcb_xkb_select_events(m_connection.get(), XCB_XKB_ID_USE_CORE_KBD, bell, 0, bell, 0, 0, nullptr);
        const auto ask = xcb_get_input_focus(m_connection.get());
        const XcbReply<xcb_get_input_focus_reply_t> done(
            xcb_get_input_focus_reply(m_connection.get(), ask, nullptr));
    }

    Sound& sound() { return m_sound; }

    int bells()
    {
        while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
            const bool isBell =
                (event->response_type & 0x7F) == m_firstEvent && event->pad0 == XCB_XKB_BELL_NOTIFY;
            m_bells += isBell ? 1 : 0;
        }
        return m_bells;
    }

private:
    XkbSound m_sound;
    XcbConnection m_connection{xcb_connect(nullptr, nullptr)};
    std::uint8_t m_firstEvent = 0;
    int m_bells = 0;
};

template <typename Ear>
class SoundContract : public ::testing::Test {
protected:
    Ear ear;
};

using Ears = ::testing::Types<FakeEar, ServerEar>;
TYPED_TEST_SUITE(SoundContract, Ears);

} // namespace

TYPED_TEST(SoundContract, EachBeepIsHeardOnce)
{
    EXPECT_EQ(this->ear.bells(), 0);
    this->ear.sound().beep();
    EXPECT_TRUE(eventually(std::chrono::seconds(10), [this] { return this->ear.bells() == 1; }));
    this->ear.sound().beep();
    EXPECT_TRUE(eventually(std::chrono::seconds(10), [this] { return this->ear.bells() == 2; }));
}

} // namespace orvane::tests
