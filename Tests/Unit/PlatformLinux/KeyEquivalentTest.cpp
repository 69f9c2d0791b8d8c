#include "PlatformLinux/Menus/KeyEquivalent.h"

#include <gmock/gmock.h>

namespace orvane {
namespace {

MenuItem item(const QString& key, EventFlags mask = eventFlag::command)
{
    MenuItem made;
    made.keyEquivalent = key;
    made.keyEquivalentModifierMask = mask;
    return made;
}

bool chooses(const MenuItem& wanted, Qt::KeyboardModifiers modifiers, Qt::Key key)
{
    return isKeyEquivalent(wanted, QKeyCombination(modifiers, key));
}

TEST(KeyEquivalent, CommandIsControlAndUpperCaseAddsShift)
{
    EXPECT_EQ(keyCombination(item(QStringLiteral("z"))), Qt::CTRL | Qt::Key_Z);
    EXPECT_EQ(keyCombination(item(QStringLiteral("Z"))), Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    EXPECT_TRUE(chooses(item(QStringLiteral("z")), Qt::ControlModifier, Qt::Key_Z));
    EXPECT_FALSE(chooses(item(QStringLiteral("z")), Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z));
    EXPECT_FALSE(chooses(item(QStringLiteral("Z")), Qt::ControlModifier, Qt::Key_Z));
    EXPECT_FALSE(chooses(item(QStringLiteral("z")), Qt::NoModifier, Qt::Key_Z));
}

TEST(KeyEquivalent, TheMaskNamesTheModifiers)
{
    using namespace eventFlag;
    EXPECT_EQ(keyCombination(item(QStringLiteral("k"), control | option)), Qt::META | Qt::ALT | Qt::Key_K);
    EXPECT_EQ(keyCombination(item(QStringLiteral("k"), shift | command)), Qt::CTRL | Qt::SHIFT | Qt::Key_K);
    EXPECT_EQ(keyCombination(item(QStringLiteral("k"), 0)), QKeyCombination(Qt::Key_K));
}

TEST(KeyEquivalent, ControlAndCommandTradePlacesInMenus)
{
    using namespace eventFlag;
    EXPECT_EQ(menuModifiers(control), command);
    EXPECT_EQ(menuModifiers(command | shift), control | shift);
    EXPECT_EQ(menuModifiers(control | command | option), control | command | option);
    EXPECT_EQ(menuModifiers(shift | secondaryFn), shift | secondaryFn);
}

TEST(KeyEquivalent, KeysThatPrintNothingHaveCharactersOfTheirOwn)
{
    EXPECT_EQ(keyCombination(item(QString(QChar(0xF704)), 0)), QKeyCombination(Qt::Key_F1));
    EXPECT_EQ(keyCombination(item(QString(QChar(0xF708)), 0)), QKeyCombination(Qt::Key_F5));
    EXPECT_EQ(keyCombination(item(QString(QChar(0xF702)))), Qt::CTRL | Qt::Key_Left);
    EXPECT_EQ(keyCombination(item(QString(QChar(0x7F)))), Qt::CTRL | Qt::Key_Backspace);
    EXPECT_EQ(keyCombination(item(QStringLiteral("\r"))), Qt::CTRL | Qt::Key_Return);
}

TEST(KeyEquivalent, ASignCountsHoweverTheLayoutReachesIt)
{
    EXPECT_TRUE(chooses(item(QStringLiteral("+")), Qt::ControlModifier, Qt::Key_Plus));
    EXPECT_TRUE(chooses(item(QStringLiteral("+")), Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Plus));
    EXPECT_TRUE(chooses(item(QStringLiteral("+")), Qt::ControlModifier | Qt::KeypadModifier, Qt::Key_Plus));
}

TEST(KeyEquivalent, AnItemWithoutOneHasNoneAndShowsNone)
{
    for (const QString& none : {QString(), QStringLiteral("ab"), QString(QChar(0x01))}) {
        EXPECT_EQ(keyCombination(item(none)), std::nullopt);
        EXPECT_TRUE(keyEquivalentText(item(none)).isEmpty());
        EXPECT_FALSE(chooses(item(none), Qt::NoModifier, Qt::Key_unknown));
    }
    EXPECT_EQ(keyEquivalentText(item(QStringLiteral("q"))), QStringLiteral("Ctrl+Q"));
}

} // namespace
} // namespace orvane
