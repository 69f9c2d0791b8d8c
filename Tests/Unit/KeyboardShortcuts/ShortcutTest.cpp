#include "KeyboardShortcuts/Shortcut/Shortcut.h"
#include "ShortcutsFixture.h"

#include <unordered_set>

using namespace orvane;
using namespace orvane::tests;
using KeyboardShortcuts::Key;

namespace {

constexpr EventFlags control = eventFlag::control;
constexpr EventFlags option = eventFlag::option;
constexpr EventFlags shift = eventFlag::shift;
constexpr EventFlags command = eventFlag::command;

class ShortcutTest : public ShortcutsFixture {
protected:
    static Event event(EventType type, std::int64_t keyCode = 40, EventFlags flags = command)
    {
        Event result;
        result.type = type;
        result.keycode = keyCode;
        result.flags = flags;
        return result;
    }

    static MenuItem item(const QString& keyEquivalent, EventFlags mask, const QString& title = {})
    {
        MenuItem result;
        result.title = title;
        result.keyEquivalent = keyEquivalent;
        result.keyEquivalentModifierMask = mask;
        return result;
    }
    static bool matches(const Shortcut& shortcut, const MenuItem& item)
    {
        const Menu menu{{}, {item}};
        return shortcut.menuItemWithMatchingShortcut(menu) == &menu.items.constFirst();
    }

    void setLayout(FakeKeyboardLayout::Texts texts)
    {
        fake.inputSources.layout = std::make_shared<FakeKeyboardLayout>(std::move(texts));
    }
};

} // namespace

TEST_F(ShortcutTest, TheNumbersAreStoredAsTheyAreGiven)
{
    const Shortcut shortcut(-5, 0x7FFF0001);
    EXPECT_EQ(shortcut.carbonKeyCode, -5);
    EXPECT_EQ(shortcut.carbonModifiers, 0x7FFF0001);
    EXPECT_EQ(shortcut.key(), Key{-5});
    EXPECT_EQ(shortcut.modifiers(), 0U);
}

TEST_F(ShortcutTest, AKeyAndFlagsBecomeItsCodeAndItsFourModifiers)
{
    const Shortcut shortcut(Key::space, control | eventFlag::secondaryFn | eventFlag::alphaShift);
    EXPECT_EQ(shortcut, Shortcut(49, 4096));
    EXPECT_EQ(shortcut.key(), Key::space);
    EXPECT_EQ(shortcut.modifiers(), control);
    EXPECT_EQ(Shortcut(Key::a, control | option | shift | command), Shortcut(0, 0x1B00));
    EXPECT_EQ(Shortcut(Key::f5), Shortcut(96, 0));
}

TEST_F(ShortcutTest, EqualityAndHashLookAtBothFields)
{
    EXPECT_EQ(Shortcut(1, 256), Shortcut(1, 256));
    EXPECT_NE(Shortcut(1, 256), Shortcut(2, 256));
    EXPECT_NE(Shortcut(1, 256), Shortcut(1, 512));
    // Bits without a meaning count too: fields are compared, not meanings.
    EXPECT_NE(Shortcut(1, 256), Shortcut(1, 257));
    const std::unordered_set<Shortcut> set{{1, 256}, {1, 256}, {2, 256}, {1, 512}};
    EXPECT_EQ(set.size(), 3U);
}

TEST_F(ShortcutTest, AKeyEventBecomesAShortcutWithTheFourModifiers)
{
    const EventFlags all = ~EventFlags{0};
    EXPECT_EQ(Shortcut::fromEvent(event(EventType::keyDown, 40, command)), Shortcut(40, 0x100));
    EXPECT_EQ(Shortcut::fromEvent(event(EventType::keyUp, 0, all)), Shortcut(0, 0x1B00));
    EXPECT_EQ(Shortcut::fromEvent(event(EventType::keyDown, 122, 0)), Shortcut(122, 0));
}

TEST_F(ShortcutTest, EveryOtherEventBecomesNone)
{
    for (const EventType type :
         {EventType::null, EventType::flagsChanged, EventType::leftMouseDown, EventType::leftMouseUp,
          EventType::rightMouseDown, EventType::rightMouseUp, EventType::otherMouseDown,
          EventType::mouseMoved, EventType::leftMouseDragged, EventType::scrollWheel,
          EventType::tapDisabledByTimeout})
        EXPECT_EQ(Shortcut::fromEvent(event(type)), std::nullopt) << static_cast<std::uint32_t>(type);
}

TEST_F(ShortcutTest, TheShortcutOfANameIsWhatIsStored)
{
    EXPECT_EQ(Shortcut::fromName(named("panel")), std::nullopt);
    store("panel", {40, 256});
    EXPECT_EQ(Shortcut::fromName(named("panel")), Shortcut(40, 256));
}

TEST_F(ShortcutTest, TheDescriptionIsTheSymbolsAndTheCapitalisedKey)
{
    struct Row {
        Shortcut shortcut;
        const char* description;
    };
    for (const Row& row :
         {Row{Shortcut(Key::space, control | option), "⌃⌥Space"}, Row{Shortcut(Key::k, command), "⌘K"},
          Row{Shortcut(Key::four, control | option | shift | command), "⌃⌥⇧⌘4"},
          Row{Shortcut(Key::f12, eventFlag::secondaryFn), "F12"}, Row{Shortcut(Key::delete_, command), "⌘⌫"},
          Row{Shortcut(Key::semicolon, option), "⌥;"}, Row{Shortcut(Key::keypad4, control), "⌃4\u20E3"}})
        EXPECT_EQ(row.shortcut.description(), QString::fromUtf8(row.description));
}

TEST_F(ShortcutTest, AKeyThatPrintsNothingEndsInTheReplacementCharacter)
{
    EXPECT_EQ(Shortcut(Key::mute, command).description(), QStringLiteral("⌘\uFFFD"));
    EXPECT_EQ(Shortcut(-1, 0).description(), QStringLiteral("\uFFFD"));
    fake.inputSources.layout = nullptr;
    EXPECT_EQ(Shortcut(Key::k, command).description(), QStringLiteral("⌘\uFFFD"));
    EXPECT_EQ(Shortcut(Key::space, command).description(), QStringLiteral("⌘Space"));
}

TEST_F(ShortcutTest, AKeyThatTheSystemCallsOtherwiseHasItsNameAndNoKeyEquivalent)
{
    EXPECT_EQ(Shortcut(Key::help, eventFlag::control).description(), QStringLiteral("⌃?\u20DD"));
    fake.inputSources.names = {{rawValue(Key::help), QStringLiteral("Insert")},
                               {0x106B, QStringLiteral("Print Screen")}};
    EXPECT_EQ(Shortcut(Key::help, eventFlag::control).description(), QStringLiteral("⌃Insert"));
    EXPECT_EQ(Shortcut(0x106B, 0).description(), QStringLiteral("Print Screen"));
    EXPECT_EQ(Shortcut(Key::help, eventFlag::control).keyEquivalent(), QString());
}

TEST_F(ShortcutTest, AnotherLayoutShowsAtTheNextCall)
{
    const Shortcut shortcut(Key::z, command);
    EXPECT_EQ(shortcut.description(), QStringLiteral("⌘Z"));
    setLayout({{6, QStringLiteral("y")}, {49, QStringLiteral("x")}});
    EXPECT_EQ(shortcut.description(), QStringLiteral("⌘Y"));
    EXPECT_EQ(shortcut.keyEquivalent(), QStringLiteral("y"));
    // The table of fixed texts takes precedence over every layout.
    EXPECT_EQ(Shortcut(Key::space).description(), QStringLiteral("Space"));
}

TEST_F(ShortcutTest, TheKeyEquivalentIsOneCharacterOrNone)
{
    setLayout({{0, QStringLiteral("a")},
               {1, QStringLiteral("ab")},
               {2, QString()},
               {3, QStringLiteral("e\u0301")},
               {4, QStringLiteral("\U0001F600")}});
    struct Row {
        Shortcut shortcut;
        QStringView keyEquivalent;
    };
    for (const Row& row :
         {Row{Shortcut(Key::a, command), u"a"},
          Row{Shortcut(Key::s), u""}, // two characters, and no single one that stands for them
          Row{Shortcut(Key::d), u""}, Row{Shortcut(Key::f), u"e\u0301"}, Row{Shortcut(Key::h), u"\U0001F600"},
          Row{Shortcut(Key::q), u""}, Row{Shortcut(Key::space), u" "}, Row{Shortcut(Key::f1), u"\uF704"},
          Row{Shortcut(Key::f20), u"\uF717"}, Row{Shortcut(Key::return_), u"↩"},
          Row{Shortcut(Key::help), u"?\u20DD"}, Row{Shortcut(Key::keypadPlus), u"+\u20E3"}})
        EXPECT_EQ(row.shortcut.keyEquivalent(), row.keyEquivalent) << row.shortcut.carbonKeyCode;
}

TEST_F(ShortcutTest, AMenuItemMatchesOnTheCharacterAndExactlyTheMask)
{
    const Shortcut shortcut(Key::k, command);
    EXPECT_TRUE(matches(shortcut, item(QStringLiteral("k"), command)));
    EXPECT_FALSE(matches(shortcut, item(QStringLiteral("j"), command)));
    EXPECT_FALSE(matches(shortcut, item(QStringLiteral("k"), command | option)));
    EXPECT_FALSE(matches(shortcut, item(QStringLiteral("k"), 0)));
    EXPECT_FALSE(matches(shortcut, item(QStringLiteral("k"), command | eventFlag::secondaryFn)));
    EXPECT_FALSE(matches(shortcut, item(QString(), command)));
    EXPECT_TRUE(matches(Shortcut(Key::return_), item(QStringLiteral("↩"), 0)));
}

TEST_F(ShortcutTest, AnUpperCaseEquivalentMeansShiftForAShortcutWithShift)
{
    const Shortcut withShift(Key::k, command | shift);
    EXPECT_TRUE(matches(withShift, item(QStringLiteral("K"), command)));
    EXPECT_TRUE(matches(withShift, item(QStringLiteral("K"), command | shift)));
    EXPECT_TRUE(matches(withShift, item(QStringLiteral("k"), command | shift)));
    EXPECT_FALSE(matches(withShift, item(QStringLiteral("k"), command)));
    EXPECT_FALSE(matches(withShift, item(QStringLiteral("K"), command | option)));
    EXPECT_FALSE(matches(Shortcut(Key::k, command), item(QStringLiteral("K"), command)));
    EXPECT_FALSE(matches(Shortcut(Key::k, command), item(QStringLiteral("K"), command | shift)));
}

TEST_F(ShortcutTest, AKeyWithoutCharacterMatchesNoItemNotEvenOneWithoutEquivalent)
{
    EXPECT_FALSE(matches(Shortcut(Key::mute, command), item(QString(), command)));
    EXPECT_FALSE(matches(Shortcut(Key::mute), item(QString(), 0)));
}

TEST_F(ShortcutTest, TheSearchGoesDepthFirstThroughTheItemsInOrder)
{
    const auto submenu = [](QList<MenuItem> items) {
        MenuItem result = item(QString(), 0);
        result.submenu = std::make_shared<Menu>(Menu{{}, std::move(items)});
        return result;
    };
    const auto k = [](const QString& title) { return item(QStringLiteral("k"), command, title); };
    const Shortcut shortcut(Key::k, command);
    const auto found = [&](const Menu& menu) {
        const MenuItem* match = shortcut.menuItemWithMatchingShortcut(menu);
        return match ? match->title : QStringLiteral("none");
    };

    EXPECT_EQ(found({}), QStringLiteral("none"));
    EXPECT_EQ(found({{}, {MenuItem::separator(), submenu({submenu({})})}}), QStringLiteral("none"));
    EXPECT_EQ(found({{}, {k(QStringLiteral("first")), k(QStringLiteral("second"))}}),
              QStringLiteral("first"));
    EXPECT_EQ(found({{},
                     {submenu({submenu({k(QStringLiteral("deep"))}), k(QStringLiteral("middle"))}),
                      k(QStringLiteral("top"))}}),
              QStringLiteral("deep"));
    EXPECT_EQ(found({{}, {submenu({item(QStringLiteral("j"), command)}), k(QStringLiteral("top"))}}),
              QStringLiteral("top"));
    MenuItem parent = submenu({k(QStringLiteral("inside"))});
    parent.title = QStringLiteral("parent");
    parent.keyEquivalent = QStringLiteral("k");
    parent.keyEquivalentModifierMask = command;
    EXPECT_EQ(found({{}, {parent}}), QStringLiteral("parent"));
}
