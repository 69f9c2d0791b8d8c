#include "Contract/EventTapSupport.h"
#include "Contract/HotKeysSupport.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/KeyWindow.h"
#include "Desktop/Support/OtherClient.h"
#include "Fakes/FakeHotKeys.h"
#include "Fakes/FakeLogSink.h"
#include "PlatformLinux/HotKeys/X11HotKeys.h"
#include "PlatformLinux/Keys/ServerKeymap.h"
#include "PlatformLinux/Shortcuts/DesktopShortcuts.h"
#include "Support/Eventually.h"

#include <gtest/gtest.h>

namespace orvane::tests {
namespace {

constexpr std::uint8_t xKeyOfJ = 44, xKeyOfK = 45, xKeyOfAlt = 64;

/// A hot key service and the keyboard in front of it.
class Subject {
public:
    virtual ~Subject() = default;
    virtual HotKeys& hotKeys() = 0;
    /// Control and Option go down first, and up last.
    virtual void press(std::uint32_t virtualKeyCode) = 0;
    virtual void release(std::uint32_t virtualKeyCode) = 0;
    /// Makes another program take each combination with the key K.
    virtual void loseK() = 0;
};

class FakeSubject : public Subject {
public:
    HotKeys& hotKeys() override { return m_hotKeys; }
    void press(std::uint32_t virtualKeyCode) override { m_hotKeys.press({virtualKeyCode, controlOption}); }
    void release(std::uint32_t virtualKeyCode) override { m_hotKeys.release(virtualKeyCode); }
    void loseK() override { m_hotKeys.taken.insert({virtualKey::k, controlOption}); }

private:
    FakeHotKeys m_hotKeys;
};

class LinuxSubject : public Subject {
public:
    HotKeys& hotKeys() override { return m_hotKeys; }
    void press(std::uint32_t virtualKeyCode) override
    {
        m_hardware.press(key::controlL);
        m_hardware.press(xKeyOfAlt);
        m_hardware.press(xKey(virtualKeyCode));
    }
    void release(std::uint32_t virtualKeyCode) override
    {
        m_hardware.release(xKey(virtualKeyCode));
        m_hardware.release(xKeyOfAlt);
        m_hardware.release(key::controlL);
    }
    void loseK() override { m_other.grabKey(xKeyOfK); }

private:
    static std::uint8_t xKey(std::uint32_t virtualKeyCode)
    {
        return virtualKeyCode == virtualKey::j ? xKeyOfJ : xKeyOfK;
    }

    FakeLogSink m_log;
    OtherClient m_other;
    KeyWindow m_window;
    ServerKeymap m_keymap;
    DesktopShortcuts m_desktopShortcuts{m_keymap};
    X11HotKeys m_hotKeys{m_log, m_desktopShortcuts};
    Hardware m_hardware;
};

struct Implementation {
    const char* name;
    std::unique_ptr<Subject> (*make)();
};

template <typename Made>
std::unique_ptr<Subject> make()
{
    return std::make_unique<Made>();
}

} // namespace

class HotKeysContract : public ::testing::TestWithParam<Implementation> {
protected:
    void tap(std::uint32_t virtualKeyCode)
    {
        subject->press(virtualKeyCode);
        subject->release(virtualKeyCode);
    }
    HotKeys::Registration registerKey(std::uint32_t virtualKeyCode, std::uint32_t id)
    {
        return subject->hotKeys().registerEventHotKey(virtualKeyCode, controlOption, hotKeyId(id));
    }
    /// True once these events come. To show that an event doesn't come, a test waits for a later one that
    /// does.
    bool hears(const char* events)
    {
        return eventually(10s, [&] { return log.text() == QLatin1String(events); });
    }

    std::unique_ptr<Subject> subject = GetParam().make();
    HotKeyLog log{subject->hotKeys()};
};

TEST_P(HotKeysContract, APressAndAReleaseAreReportedOnceEach)
{
    const auto registration = registerKey(virtualKey::k, 1);
    ASSERT_EQ(registration.status, noErr);
    ASSERT_TRUE(registration.hotKey);
    subject->press(virtualKey::k);
    EXPECT_TRUE(hears("+1")) << log.text().toStdString();
    subject->release(virtualKey::k);
    EXPECT_TRUE(hears("+1 -1")) << log.text().toStdString();
    tap(virtualKey::k);
    EXPECT_TRUE(hears("+1 -1 +1 -1")) << log.text().toStdString();
}

TEST_P(HotKeysContract, TheEventCarriesTheWholeId)
{
    std::optional<EventHotKeyID> told;
    const auto handler = subject->hotKeys().installEventHandler([&](const KeyboardEvent* event) {
        told = event ? event->directObject : std::nullopt;
        return noErr;
    });
    handler->addEventTypes({KeyboardEvent::Kind::hotKeyPressed});
    const auto registration = registerKey(virtualKey::k, 7);
    tap(virtualKey::k);
    EXPECT_TRUE(eventually(10s, [&] { return told == hotKeyId(7); }));
}

TEST_P(HotKeysContract, AnEndedRegistrationFiresNoMore)
{
    auto registration = registerKey(virtualKey::k, 1);
    const auto other = registerKey(virtualKey::j, 2);
    registration.hotKey.reset();
    tap(virtualKey::k);
    tap(virtualKey::j);
    EXPECT_TRUE(hears("+2 -2")) << log.text().toStdString();
}

TEST_P(HotKeysContract, WhatAnotherProgramHoldsIsRefused)
{
    subject->loseK();
    const auto refused = registerKey(virtualKey::k, 1);
    EXPECT_EQ(refused.status, eventHotKeyExistsErr);
    EXPECT_FALSE(refused.hotKey);
    const auto other = registerKey(virtualKey::j, 2);
    EXPECT_EQ(other.status, noErr);
}

TEST_P(HotKeysContract, TwoRegistrationsOfOneCombinationBothFire)
{
    auto first = registerKey(virtualKey::k, 1);
    const auto second = registerKey(virtualKey::k, 2);
    ASSERT_EQ(second.status, noErr);
    tap(virtualKey::k);
    EXPECT_TRUE(hears("+1 +2 -1 -2")) << log.text().toStdString();
    first.hotKey.reset();
    tap(virtualKey::k);
    EXPECT_TRUE(hears("+1 +2 -1 -2 +2 -2")) << log.text().toStdString();
}

TEST_P(HotKeysContract, ARegistrationThatEndsWhileItsKeyIsDownIsToldOfNoRelease)
{
    auto registration = registerKey(virtualKey::k, 1);
    const auto other = registerKey(virtualKey::j, 2);
    subject->press(virtualKey::k);
    ASSERT_TRUE(hears("+1")) << log.text().toStdString();
    registration.hotKey.reset();
    subject->release(virtualKey::k);
    tap(virtualKey::j);
    EXPECT_TRUE(hears("+1 +2 -2")) << log.text().toStdString();
    registration = registerKey(virtualKey::k, 1);
    tap(virtualKey::k);
    EXPECT_TRUE(hears("+1 +2 -2 +1 -1")) << "nothing is stuck: " << log.text().toStdString();
}

TEST_P(HotKeysContract, ARegistrationMayEndItselfWhenItFires)
{
    auto first = registerKey(virtualKey::k, 1);
    const auto second = registerKey(virtualKey::k, 2);
    log.onEvent = [&] { first.hotKey.reset(); };
    tap(virtualKey::k);
    EXPECT_TRUE(hears("+1 +2 -2")) << log.text().toStdString();
}

TEST_P(HotKeysContract, AHandlerIsToldOnlyOfTheKindsThatWereAdded)
{
    using enum KeyboardEvent::Kind;
    const auto registration = registerKey(virtualKey::k, 1);
    const auto other = registerKey(virtualKey::j, 2);
    log.handler().removeEventTypes({hotKeyPressed});
    tap(virtualKey::k);
    EXPECT_TRUE(hears("-1")) << log.text().toStdString();
    log.handler().removeEventTypes({hotKeyReleased});
    tap(virtualKey::k);
    // The last release shows that the tap before it has been handled.
    HotKeyLog marker(subject->hotKeys());
    tap(virtualKey::j);
    EXPECT_TRUE(eventually(10s, [&] { return marker.text().endsWith(QLatin1String("-2")); }));
    EXPECT_EQ(log.text(), QLatin1String("-1"));
}

TEST_P(HotKeysContract, TheNewestHandlerIsAskedFirstAndMayLeaveAnEventToTheOthers)
{
    const auto registration = registerKey(virtualKey::k, 1);
    int asked = 0;
    OSStatus answer = noErr;
    const auto newer = subject->hotKeys().installEventHandler([&](const KeyboardEvent*) {
        ++asked;
        return answer;
    });
    newer->addEventTypes({KeyboardEvent::Kind::hotKeyPressed});
    tap(virtualKey::k);
    EXPECT_TRUE(hears("-1")) << log.text().toStdString();
    EXPECT_EQ(asked, 1);
    answer = eventNotHandledErr;
    tap(virtualKey::k);
    EXPECT_TRUE(hears("-1 +1 -1")) << log.text().toStdString();
    EXPECT_EQ(asked, 2);
}

INSTANTIATE_TEST_SUITE_P(Platforms, HotKeysContract,
                         ::testing::Values(Implementation{"Fake", &make<FakeSubject>},
                                           Implementation{"Linux", &make<LinuxSubject>}),
                         [](const auto& tested) { return tested.param.name; });

} // namespace orvane::tests
