#include "Fakes/FakeInputSources.h"
#include "PlatformLinux/Keys/ServerKeymap.h"
#include "PlatformLinux/Keys/XkbInputSources.h"
#include "Support/Eventually.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>

namespace orvane::tests {
namespace {

// Virtual key codes, by what American keyboards print.
constexpr std::int64_t keyA = 0, keyQ = 12, keyY = 16, keyZ = 6, keyLeftBracket = 33, keyGrave = 50,
                       keyReturn = 36, keyF1 = 122, keyLeft = 123, keyShift = 56, keyKeypad7 = 89;

void setLayouts(const QString& layouts)
{
    const QStringList arguments{u"-rules"_qs, u"evdev"_qs, u"-model"_qs, u"pc105"_qs, u"-layout"_qs, layouts};
    ASSERT_EQ(QProcess::execute(u"setxkbmap"_qs, arguments), 0);
}

void lockGroup(unsigned group)
{
    Display* display = XOpenDisplay(nullptr);
    XkbLockGroup(display, XkbUseCoreKbd, group);
    XSync(display, False);
    XCloseDisplay(display);
}

/// Input sources of a user who changes from the American layout to the German one.
class Subject {
public:
    virtual ~Subject() = default;
    virtual InputSources& sources() = 0;
    virtual void selectGerman() = 0;

    NotificationCenter center;
};

class FakeSubject : public Subject {
public:
    InputSources& sources() override { return m_sources; }
    void selectGerman() override
    {
        auto texts = FakeKeyboardLayout::american()->texts;
        std::swap(texts[keyY], texts[keyZ]);
        texts[keyLeftBracket] = u"ü"_qs;
        m_sources.select(std::make_shared<FakeKeyboardLayout>(texts));
    }

private:
    FakeInputSources m_sources{center};
};

class LinuxSubject : public Subject {
public:
    ~LinuxSubject() override { setLayouts(u"us"_qs); }
    InputSources& sources() override { return m_sources; }
    void selectGerman() override { setLayouts(u"de"_qs); }

private:
    ServerKeymap m_keymap;
    XkbInputSources m_sources{m_keymap, center};
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

class InputSourcesContract : public ::testing::TestWithParam<Implementation> {
protected:
    std::optional<QString> text(std::int64_t key)
    {
        const auto layout = subject->sources().currentASCIICapableKeyboardLayout();
        return layout ? layout->keyTranslate(key) : std::nullopt;
    }

    std::unique_ptr<Subject> subject = GetParam().make();
    int changes = 0;
    std::unique_ptr<NotificationCenter::Token> observer =
        subject->center.addObserver(InputSources::selectedKeyboardInputSourceChangedNotification(),
                                    [this](const Notification&) { ++changes; });
};

TEST_P(InputSourcesContract, AKeyGivesWhatItPrintsWithoutModifiers)
{
    EXPECT_EQ(text(keyA), u"a"_qs);
    EXPECT_EQ(text(keyY), u"y"_qs);
    EXPECT_EQ(text(keyLeftBracket), u"["_qs);
    EXPECT_EQ(text(keyGrave), u"`"_qs);
    EXPECT_EQ(text(keyKeypad7), u"7"_qs);
}

TEST_P(InputSourcesContract, AKeyThatPrintsNothingGivesNothing)
{
    for (const std::int64_t key :
         {keyReturn, keyF1, keyLeft, keyShift, std::int64_t{0x7F}, std::int64_t{-1}, std::int64_t{0x1000}})
        EXPECT_EQ(text(key), std::nullopt) << key;
}

TEST_P(InputSourcesContract, AKeyThatIsWhatItsCodeSaysHasNoNameOfItsOwn)
{
    for (const std::int64_t key : {keyA, keyReturn, keyF1, keyLeft, keyShift, std::int64_t{-1}})
        EXPECT_EQ(subject->sources().keyName(key), std::nullopt) << key;
}

TEST_P(InputSourcesContract, AnotherLayoutIsToldAndPrintsOtherwise)
{
    subject->selectGerman();
    EXPECT_TRUE(eventually(10s, [this] { return changes > 0; }));
    EXPECT_EQ(text(keyY), u"z"_qs);
    EXPECT_EQ(text(keyZ), u"y"_qs);
    EXPECT_EQ(text(keyLeftBracket), u"ü"_qs);
    EXPECT_EQ(changes, 1);
}

TEST_P(InputSourcesContract, ALayoutStaysWhatItWasWhenItWasAskedFor)
{
    const auto american = subject->sources().currentASCIICapableKeyboardLayout();
    ASSERT_TRUE(american);
    subject->selectGerman();
    ASSERT_TRUE(eventually(10s, [this] { return changes > 0; }));
    EXPECT_EQ(american->keyTranslate(keyY), u"y"_qs);
}

INSTANTIATE_TEST_SUITE_P(Platforms, InputSourcesContract,
                         ::testing::Values(Implementation{"Fake", &make<FakeSubject>},
                                           Implementation{"Linux", &make<LinuxSubject>}),
                         [](const auto& tested) { return tested.param.name; });

class XkbInputSourcesTest : public ::testing::Test {
protected:
    ~XkbInputSourcesTest() override
    {
        lockGroup(0);
        setLayouts(u"us"_qs);
    }

    /// Waits until the server's change has been announced.
    template <typename Change>
    void change(Change make)
    {
        const int before = m_changes;
        make();
        ASSERT_TRUE(eventually(10s, [&] { return m_changes > before; }));
    }
    std::optional<QString> text(std::int64_t key)
    {
        return m_sources.currentASCIICapableKeyboardLayout()->keyTranslate(key);
    }

    std::optional<QString> name(std::int64_t key) { return m_sources.keyName(key); }

private:
    NotificationCenter m_center;
    ServerKeymap m_keymap;
    XkbInputSources m_sources{m_keymap, m_center};
    int m_changes = 0;
    std::unique_ptr<NotificationCenter::Token> m_observer =
        m_center.addObserver(InputSources::selectedKeyboardInputSourceChangedNotification(),
                             [this](const Notification&) { ++m_changes; });
};

TEST_F(XkbInputSourcesTest, KeysThatThisKeyboardCallsOtherwiseOrThatHaveNoVirtualCodeHaveNames)
{
    constexpr std::int64_t keyHelp = 114, keyPrint = 0x1000 + 107, keyOfNoSymbol = 0x1000 + 93;
    EXPECT_EQ(name(keyHelp), u"Insert"_qs);
    EXPECT_EQ(name(keyPrint), u"Print Screen"_qs);
    EXPECT_EQ(name(keyOfNoSymbol), std::nullopt);
}

TEST_F(XkbInputSourcesTest, AnotherGroupIsAnotherLayout)
{
    change([] { setLayouts(u"us,fr"_qs); });
    EXPECT_EQ(text(keyQ), u"q"_qs);
    change([] { lockGroup(1); });
    EXPECT_EQ(text(keyQ), u"a"_qs);
    change([] { lockGroup(0); });
    EXPECT_EQ(text(keyQ), u"q"_qs);
}

TEST_F(XkbInputSourcesTest, WhereCyrillicIsTypedTheFirstLatinLayoutCounts)
{
    change([] { setLayouts(u"ru,de,us"_qs); });
    EXPECT_EQ(text(keyY), u"z"_qs);
}

TEST_F(XkbInputSourcesTest, WithOneLayoutOnlyThatOneCounts)
{
    change([] { setLayouts(u"ru"_qs); });
    EXPECT_EQ(text(keyQ), u"й"_qs);
}

} // namespace orvane::tests
