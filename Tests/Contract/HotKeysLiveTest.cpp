#include "Contract/HotKeysFixture.h"
#include "PlatformLinux/EventTap/XInputEventTaps.h"
#include "PlatformLinux/Keys/EventKeyCodes.h"

#include <QProcess>

#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>

namespace orvane::tests {
namespace {

/// The descriptors of this process's connections to the X server.
std::set<int> connectionsToTheServer()
{
    std::set<int> sockets;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const int descriptor = std::stoi(entry.path().filename().string());
        sockaddr_un peer{};
        socklen_t size = sizeof peer;
        if (::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &size) != 0 ||
            peer.sun_family != AF_UNIX)
            continue;
        const std::size_t length = size - offsetof(sockaddr_un, sun_path);
        if (std::string_view(peer.sun_path, length).find(".X11-unix/") != std::string_view::npos)
            sockets.insert(descriptor);
    }
    return sockets;
}

void setLayout(const QString& layout, const QStringList& options = {})
{
    QStringList arguments{u"-rules"_qs,  u"evdev"_qs, u"-model"_qs,  u"pc105"_qs,
                          u"-layout"_qs, layout,      u"-option"_qs, QString()};
    for (const QString& option : options)
        arguments << u"-option"_qs << option;
    ASSERT_EQ(QProcess::execute(u"setxkbmap"_qs, arguments), 0);
}

} // namespace

TEST_F(HotKeysLiveTest, TheLocksDontMatter)
{
    const auto registration = registerKey(virtualKey::k, 1);
    for (const bool caps : {false, true}) {
        for (const bool num : {false, true}) {
            if (caps)
                hardware.tap(key::capsLock);
            if (num)
                hardware.tap(key::numLock);
            const auto before = log.events().size();
            tap(xKeyOfK);
            EXPECT_TRUE(eventually(10s, [&] { return log.events().size() == before + 2; }))
                << "caps " << caps << " num " << num << ": " << heard();
            if (caps)
                hardware.tap(key::capsLock);
            if (num)
                hardware.tap(key::numLock);
        }
    }
}

TEST_F(HotKeysLiveTest, LocksOfOtherModifiersDontMatterEither)
{
    const auto registration = registerKey(virtualKey::k, 1);
    for (const unsigned lock :
         {unsigned{Mod3Mask}, unsigned{Mod5Mask}, unsigned{Mod3Mask | Mod5Mask | LockMask}}) {
        const auto before = log.events().size();
        xlib.lockModifiers(lock);
        tap(xKeyOfK);
        EXPECT_TRUE(eventually(3s, [&] { return log.events().size() == before + 2; }))
            << "lock " << lock << ": " << heard();
        xlib.lockModifiers(0);
    }
}

TEST_F(HotKeysLiveTest, ALockedModifierOfAnotherCombinationDoesMatter)
{
    const auto plain = registerKey(virtualKey::k, 1);
    const auto more = registerKey(virtualKey::k, 2, controlOption | carbonModifier::command);
    xlib.lockModifiers(Mod4Mask);
    tap(xKeyOfK);
    EXPECT_TRUE(hears("+2 -2")) << heard();
    xlib.lockModifiers(0);
}

TEST_F(HotKeysLiveTest, AfterALostConnectionTheKeysAreGrabbedAgain)
{
    const std::set<int> before = connectionsToTheServer();
    const auto registration = registerKey(virtualKey::k, 1);
    tap(xKeyOfK);
    ASSERT_TRUE(hears("+1 -1")) << heard();
    std::set<int> made = connectionsToTheServer();
    for (const int socket : before)
        made.erase(socket);
    // The keymap's reading may still have a connection beside that of the hot keys.
    ASSERT_FALSE(made.empty());
    // Another client can't kill these: they have no resource by which they could be named.
    for (const int socket : made)
        ASSERT_EQ(::shutdown(socket, SHUT_RDWR), 0);
    int questions = 0; // without the event loop, or it would be grabbed again meanwhile
    while (!xlib.couldGrab(xKeyOfK, ControlMask | Mod1Mask))
        ASSERT_LT(++questions, 10000) << "the grab ends with the connection";
    EXPECT_TRUE(eventually(10s, [this] { return !xlib.couldGrab(xKeyOfK, ControlMask | Mod1Mask); }));
    tap(xKeyOfK);
    EXPECT_TRUE(hears("+1 -1 +1 -1")) << heard();
}

TEST_F(HotKeysLiveTest, AKeyThatIsHeldFiresOnce)
{
    const QuickRepeat quickRepeat(other);
    const auto registration = registerKey(virtualKey::k, 1);
    hold(xKeyOfJ);
    EXPECT_TRUE(eventually(10s, [&] { return window.typed().size() > 3; })) << "the server repeats";
    pressModifiers();
    hold(xKeyOfK);
    releaseModifiers();
    EXPECT_TRUE(hears("+1 -1")) << heard();
}

TEST_F(HotKeysLiveTest, AKeyThatIsHeldFiresOnceWithAnEventTapToo)
{
    const QuickRepeat quickRepeat(other);
    XInputEventTaps taps(logSink, [] { return CommandKeys::control; });
    LambdaTap eventTap(taps);
    const auto registration = registerKey(virtualKey::k, 1);
    pressModifiers();
    hold(xKeyOfK);
    releaseModifiers();
    EXPECT_TRUE(hears("+1 -1")) << heard();
    EXPECT_TRUE(eventTap.sawRepeat());
}

TEST_F(HotKeysLiveTest, TheReleaseComesThoughTheModifiersWereLetGoFirst)
{
    const auto registration = registerKey(virtualKey::k, 1);
    pressModifiers();
    hardware.press(xKeyOfK);
    EXPECT_TRUE(hears("+1")) << heard();
    releaseModifiers();
    hardware.release(xKeyOfK);
    EXPECT_TRUE(hears("+1 -1")) << heard();
}

TEST_F(HotKeysLiveTest, OtherModifiersAreAnotherCombination)
{
    const auto plain = registerKey(virtualKey::k, 1, carbonModifier::control);
    const auto more = registerKey(virtualKey::k, 2, carbonModifier::control | carbonModifier::command);
    hardware.press(key::controlL);
    hardware.press(key::superL);
    hardware.tap(xKeyOfK);
    hardware.release(key::superL);
    hardware.tap(xKeyOfK);
    hardware.release(key::controlL);
    EXPECT_TRUE(hears("+2 -2 +1 -1")) << heard();
}

TEST_F(HotKeysLiveTest, AnUnregisteredKeyReachesTheWindowAgain)
{
    auto registration = registerKey(virtualKey::k, 1);
    tap(xKeyOfK);
    ASSERT_TRUE(hears("+1 -1")) << heard();
    EXPECT_THAT(window.keys().join(u' ').toStdString(), ::testing::Not(::testing::HasSubstr("+45")));
    registration.hotKey.reset();
    tap(xKeyOfK);
    EXPECT_TRUE(eventually(10s, [&] { return window.keys().contains(u"+45/control+alt"_qs); }))
        << window.keys().join(u' ').toStdString();
    EXPECT_EQ(log.text(), u"+1 -1"_qs);
}

TEST_F(HotKeysLiveTest, ARefusalLeavesNothingGrabbed)
{
    xlib.grab(xKeyOfK, ControlMask | Mod1Mask | LockMask | Mod2Mask);
    EXPECT_EQ(registerKey(virtualKey::k, 1).status, eventHotKeyExistsErr);
    Xlib third;
    for (const unsigned locks : {0u, unsigned{LockMask}, unsigned{Mod2Mask}})
        EXPECT_TRUE(third.couldGrab(xKeyOfK, ControlMask | Mod1Mask | locks)) << locks;
}

TEST_F(HotKeysLiveTest, AKeyWithoutAVirtualCodeIsRegisteredByTheCodeOfItsEvents)
{
    constexpr std::uint8_t xKeyOfPause = 127;
    const auto registration = registerKey(static_cast<std::uint32_t>(eventKeyCode(xKeyOfPause)), 1);
    ASSERT_EQ(registration.status, noErr);
    tap(xKeyOfPause);
    EXPECT_TRUE(eventually(10s, [&] { return log.events().size() == 2; })) << heard();
}

TEST_F(HotKeysLiveTest, ACodeOfNoKeyIsRefused)
{
    EXPECT_EQ(registerKey(0x1000, 1).status, eventHotKeyInvalidErr);
    EXPECT_EQ(registerKey(0x7F, 1).status, eventHotKeyInvalidErr);
    EXPECT_EQ(registerKey(0xFFFF, 1).status, eventHotKeyInvalidErr);
}

TEST_F(HotKeysLiveTest, WithNothingRegisteredThereIsNoConnection)
{
    const int clients = xlib.clients();
    auto first = registerKey(virtualKey::k, 1);
    auto second = registerKey(virtualKey::j, 2);
    EXPECT_EQ(xlib.clients(), clients + 1);
    first.hotKey.reset();
    second.hotKey.reset();
    EXPECT_TRUE(eventually(10s, [&] { return xlib.clients() == clients; }));
}

TEST_F(HotKeysLiveTest, AKeyThatWasHeldBeforeItsRegistrationFiresOnlyWhenPressedAnew)
{
    const QuickRepeat quickRepeat(other);
    pressModifiers();
    hardware.press(xKeyOfK);
    ASSERT_TRUE(eventually(10s, [&] { return window.keys().contains(u"+45/control+alt"_qs); }));
    const auto registration = registerKey(virtualKey::k, 1);
    awaitRepeats();
    hardware.release(xKeyOfK);
    hardware.tap(xKeyOfK);
    releaseModifiers();
    EXPECT_TRUE(hears("+1 -1")) << heard();
}

TEST_F(HotKeysLiveTest, OfTwoKeysEachIsReportedThoughTheFirstIsLetGoFirst)
{
    const auto first = registerKey(virtualKey::k, 1);
    const auto second = registerKey(virtualKey::j, 2);
    const auto pressBothAndLetTheFirstGo = [this] {
        pressModifiers();
        hardware.press(xKeyOfK);
        hardware.press(xKeyOfJ);
        hardware.release(xKeyOfK);
    };
    pressBothAndLetTheFirstGo();
    hardware.release(xKeyOfJ);
    releaseModifiers();
    EXPECT_TRUE(hears("+1 +2 -1 -2")) << heard();
    const QuickRepeat quickRepeat(other);
    pressBothAndLetTheFirstGo();
    awaitRepeats(); // the second grab's repeats, which begin anew
    hardware.release(xKeyOfJ);
    releaseModifiers();
    EXPECT_TRUE(hears("+1 +2 -1 -2 +1 +2 -1 -2")) << heard();
}

TEST_F(HotKeysLiveTest, ItFiresWhileAnEventTapHasTheKeyboards)
{
    XInputEventTaps taps(logSink, [] { return CommandKeys::control; });
    LambdaTap eventTap(taps);
    const auto registration = registerKey(virtualKey::k, 1);
    tap(xKeyOfK);
    EXPECT_TRUE(hears("+1 -1")) << heard();
    EXPECT_FALSE(eventTap.seen().empty());
}

TEST_F(HotKeysLiveTest, ATapThatComesOrGoesWhileTheKeyIsDownLosesNoRelease)
{
    XInputEventTaps taps(logSink, [] { return CommandKeys::control; });
    const auto registration = registerKey(virtualKey::k, 1);
    auto eventTap = std::make_unique<LambdaTap>(taps);
    pressModifiers();
    hardware.press(xKeyOfK);
    EXPECT_TRUE(hears("+1")) << heard();
    eventTap.reset();
    hardware.release(xKeyOfK);
    EXPECT_TRUE(hears("+1 -1")) << heard();
    hardware.press(xKeyOfK);
    EXPECT_TRUE(hears("+1 -1 +1")) << heard();
    eventTap = std::make_unique<LambdaTap>(taps);
    hardware.release(xKeyOfK);
    EXPECT_TRUE(hears("+1 -1 +1 -1")) << heard();
    releaseModifiers();
}

TEST_F(HotKeysLiveTest, RegistrationsAndHandlersMayOutliveTheService)
{
    auto service = std::make_unique<X11HotKeys>(logSink, desktopShortcuts);
    auto registration = service->registerEventHotKey(virtualKey::k, controlOption, hotKeyId(1));
    HotKeyLog late(*service);
    service.reset();
    EXPECT_TRUE(eventually(10s, [this] { return xlib.couldGrab(xKeyOfK, ControlMask | Mod1Mask); }));
    registration.hotKey.reset();
}

class HotKeysLayoutTest : public HotKeysLiveTest {
protected:
    ~HotKeysLayoutTest() override { setLayout(u"us"_qs); }
};

TEST_F(HotKeysLayoutTest, ItIsThePlaceOfTheKeyThatCountsOnEveryLayout)
{
    constexpr std::uint32_t virtualZ = 6;
    constexpr std::uint8_t xKeyOfZ = 52;
    const auto registration = registerKey(virtualZ, 1);
    setLayout(u"de"_qs);
    tap(xKeyOfZ);
    EXPECT_TRUE(hears("+1 -1")) << heard();
    setLayout(u"us,ru"_qs);
    xlib.lockGroup(1);
    tap(xKeyOfZ);
    EXPECT_TRUE(hears("+1 -1 +1 -1")) << heard();
    xlib.lockGroup(0);
}

TEST_F(HotKeysLayoutTest, TheModifiersAreFollowedToOtherKeys)
{
    const auto registration = registerKey(virtualKey::k, 1, carbonModifier::command);
    setLayout(u"us"_qs, {u"altwin:swap_alt_win"_qs});
    const auto altIsSuper = [&] {
        hardware.press(xKeyOfAlt);
        hardware.tap(xKeyOfK);
        hardware.release(xKeyOfAlt);
        return !log.events().isEmpty();
    };
    EXPECT_TRUE(eventually(10s, altIsSuper)) << heard();
}

TEST_F(HotKeysLayoutTest, AMovedModifierBitIsGrabbedAnew)
{
    const auto registration = registerKey(virtualKey::k, 1, carbonModifier::command);
    // Puts Super on Mod3 instead of Mod4.
    QProcess xmodmap;
    xmodmap.start(u"xmodmap"_qs, {u"-"_qs});
    xmodmap.write("clear mod4\nclear mod3\nadd mod3 = Super_L Super_R\n");
    xmodmap.closeWriteChannel();
    ASSERT_TRUE(xmodmap.waitForFinished());
    ASSERT_EQ(xmodmap.exitCode(), 0) << xmodmap.readAllStandardError().toStdString();
    EXPECT_TRUE(eventually(10s, [&] { return !xlib.couldGrab(xKeyOfK, Mod3Mask); }));
    EXPECT_TRUE(xlib.couldGrab(xKeyOfK, Mod4Mask)) << "the old grab is gone";
    hardware.press(key::superL);
    hardware.tap(xKeyOfK);
    hardware.release(key::superL);
    EXPECT_TRUE(hears("+1 -1")) << heard();
}

} // namespace orvane::tests
