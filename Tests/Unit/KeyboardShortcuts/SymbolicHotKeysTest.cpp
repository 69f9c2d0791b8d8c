#include "KeyboardShortcuts/Registration/CarbonKeyboardShortcuts.h"
#include "ShortcutsFixture.h"

using namespace orvane;
using namespace orvane::KeyboardShortcuts;
using namespace orvane::tests;

namespace {

class SymbolicHotKeysTest : public ShortcutsFixture {};

} // namespace

TEST_F(SymbolicHotKeysTest, TheDesktopsShortcutsInForceAreListedInTheirOrder)
{
    fake.hotKeys.setSymbolicHotKeys({{48, 0x100}, {49, 0x1000}, {48, 0x100}});
    EXPECT_EQ(CarbonKeyboardShortcuts::system(),
              (QList<Shortcut>{Shortcut(48, 0x100), Shortcut(49, 0x1000), Shortcut(48, 0x100)}));
}

TEST_F(SymbolicHotKeysTest, AnEntryThatIsNotWholeOrNotInForceIsSkipped)
{
    const auto entry = [](const QVariant& enabled, const QVariant& code, const QVariant& modifiers) {
        QVariantMap map;
        const auto put = [&](const QString& key, const QVariant& value) {
            if (value.isValid())
                map.insert(key, value);
        };
        put(QStringLiteral("kHISymbolicHotKeyEnabled"), enabled);
        put(QStringLiteral("kHISymbolicHotKeyCode"), code);
        put(QStringLiteral("kHISymbolicHotKeyModifiers"), modifiers);
        return QVariant(map);
    };
    fake.hotKeys.symbolicHotKeys.array = QVariantList{
        entry(false, 1, 256),
        entry(1, 2, 256),
        entry(QStringLiteral("true"), 3, 256),
        entry({}, 4, 256),
        entry(true, {}, 256),
        entry(true, QStringLiteral("6"), 256),
        entry(true, true, 256),
        entry(true, 7.0, 256),
        entry(true, 8, {}),
        entry(true, 9, 256.0),
        entry(true, 10, false),
        QVariantMap{},
        entry(true, qint64{11}, qint64{256}),
        entry(true, 12, 0x7FFFFFFF),
        entry(true, -1, 0),
    };
    EXPECT_EQ(CarbonKeyboardShortcuts::system(),
              (QList<Shortcut>{Shortcut(11, 256), Shortcut(12, 0x1B00), Shortcut(-1, 0)}));
}

TEST_F(SymbolicHotKeysTest, ABadAnswerIsAnEmptyList)
{
    fake.hotKeys.setSymbolicHotKeys({{48, 0x100}});
    ASSERT_EQ(CarbonKeyboardShortcuts::system().size(), 1);
    fake.hotKeys.symbolicHotKeys.status = unimpErr;
    EXPECT_TRUE(CarbonKeyboardShortcuts::system().isEmpty());
    fake.hotKeys.symbolicHotKeys.status = noErr;

    QVariantList list = fake.hotKeys.symbolicHotKeys.array.toList();
    list.append(QStringLiteral("no dictionary"));
    fake.hotKeys.symbolicHotKeys.array = list;
    EXPECT_TRUE(CarbonKeyboardShortcuts::system().isEmpty());
    for (const QVariant& array :
         {QVariant(), QVariant(7), QVariant(QStringLiteral("x")), QVariant(QVariantMap())}) {
        fake.hotKeys.symbolicHotKeys.array = array;
        EXPECT_TRUE(CarbonKeyboardShortcuts::system().isEmpty());
    }
}
