#include "Capabilities/KeySwap/RemapEngine.h"
#include "Capabilities/KeySwap/AppExclusion.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace {

constexpr std::int64_t keyC = 8;
constexpr std::int64_t keyP = 35;
constexpr RemapFlags command = RemapFlags::command;
constexpr RemapFlags control = RemapFlags::control;
constexpr RemapFlags option = RemapFlags::option;
constexpr RemapFlags shift = RemapFlags::shift;
constexpr RemapFlags fn = RemapFlags::fn;

RemapOutcome outcome(std::int64_t keyCode, RemapFlags flags, RemapMode mode)
{
    return RemapEngine::outcome({keyCode, flags}, mode, RemapEngine::defaultShortcutKeyCodes());
}

QStringList patterns(std::initializer_list<const char*> list)
{
    QStringList result;
    for (const char* pattern : list)
        result.append(QLatin1String(pattern));
    return result;
}

bool remaps(const char* bundleID, AppExclusionMode mode, const QStringList& list)
{
    return AppExclusion::shouldRemap(bundleID ? std::optional(QString::fromUtf8(bundleID)) : std::nullopt,
                                     mode, list);
}

bool matches(const char* bundleID, std::initializer_list<const char*> list)
{
    return remaps(bundleID, AppExclusionMode::allowlist, patterns(list));
}

} // namespace

TEST(RemapEngine, TheWholeTruthTableWithAnyOtherModifiersCarriedAlong)
{
    const auto unchanged = RemapOutcome::unchanged();
    for (std::int64_t others = 0; others < 8; ++others) {
        const RemapFlags carried(others << 2); // each combination of option, shift and fn
        const RemapFlags none = carried;
        const RemapFlags justControl = carried.united(control);
        const RemapFlags justCommand = carried.united(command);
        const RemapFlags both = justControl.united(command);
        const auto toCommand = RemapOutcome::rewrite(justCommand);
        const auto toControl = RemapOutcome::rewrite(justControl);

        struct Row {
            RemapFlags flags;
            RemapOutcome off, inTable, notInTable, fullSwap;
        };
        for (const Row& row : {Row{none, unchanged, unchanged, unchanged, unchanged},
                               Row{justControl, unchanged, toCommand, unchanged, toCommand},
                               Row{justCommand, unchanged, unchanged, unchanged, toControl},
                               Row{both, unchanged, unchanged, unchanged, unchanged}}) {
            EXPECT_EQ(outcome(keyC, row.flags, RemapMode::off), row.off);
            EXPECT_EQ(outcome(keyC, row.flags, RemapMode::commonShortcuts), row.inTable);
            EXPECT_EQ(outcome(keyP, row.flags, RemapMode::commonShortcuts), row.notInTable);
            EXPECT_EQ(outcome(keyC, row.flags, RemapMode::fullSwap), row.fullSwap);
            EXPECT_EQ(outcome(keyP, row.flags, RemapMode::fullSwap), row.fullSwap);
        }
    }
}

TEST(RemapEngine, TheDefaultTableHasElevenKeys)
{
    EXPECT_EQ(RemapEngine::defaultShortcutKeyCodes(),
              (std::set<std::int64_t>{0, 1, 3, 6, 7, 8, 9, 13, 15, 17, 45}));
}

TEST(RemapEngine, AnEmptyTableRewritesNothingInTheCommonModeAndStillSwaps)
{
    const KeyChord chord{keyC, control};
    EXPECT_EQ(RemapEngine::outcome(chord, RemapMode::commonShortcuts, {}), RemapOutcome::unchanged());
    EXPECT_EQ(RemapEngine::outcome(chord, RemapMode::fullSwap, {}), RemapOutcome::rewrite(command));
}

TEST(RemapEngine, FullSwapTakesAModifiersOwnKeyToo)
{
    EXPECT_EQ(outcome(59, control, RemapMode::fullSwap), RemapOutcome::rewrite(command));
}

TEST(RemapEngine, ShiftAndFnAreCarried)
{
    EXPECT_EQ(outcome(6, {control, shift}, RemapMode::commonShortcuts),
              RemapOutcome::rewrite({command, shift}));
    EXPECT_EQ(outcome(keyC, {control, fn}, RemapMode::commonShortcuts), RemapOutcome::rewrite({command, fn}));
    EXPECT_EQ(outcome(keyC, {control, option}, RemapMode::commonShortcuts),
              RemapOutcome::rewrite({command, option}));
    EXPECT_EQ(outcome(keyC, {control, command}, RemapMode::commonShortcuts), RemapOutcome::unchanged());
}

TEST(RemapOutcome, Equality)
{
    EXPECT_EQ(RemapOutcome::unchanged(), RemapOutcome::unchanged());
    EXPECT_EQ(RemapOutcome::rewrite(shift), RemapOutcome::rewrite(shift));
    EXPECT_NE(RemapOutcome::rewrite(shift), RemapOutcome::rewrite(fn));
    EXPECT_NE(RemapOutcome::rewrite({}), RemapOutcome::unchanged());
}

TEST(RemapMode, RawValues)
{
    EXPECT_EQ(fromRawValue<RemapMode>(u"off"), RemapMode::off);
    EXPECT_EQ(fromRawValue<RemapMode>(u"commonShortcuts"), RemapMode::commonShortcuts);
    EXPECT_EQ(fromRawValue<RemapMode>(u"fullSwap"), RemapMode::fullSwap);
    EXPECT_EQ(fromRawValue<RemapMode>(u"FullSwap"), std::nullopt);
    EXPECT_EQ(fromRawValue<RemapMode>(u""), std::nullopt);
    for (const RemapMode mode : allCases<RemapMode>())
        EXPECT_EQ(fromRawValue<RemapMode>(QString(rawValue(mode))), mode);
    EXPECT_EQ(fromRawValue<AppExclusionMode>(u"denylist"), AppExclusionMode::denylist);
    EXPECT_EQ(fromRawValue<AppExclusionMode>(u"allowlist"), AppExclusionMode::allowlist);
    EXPECT_EQ(fromRawValue<AppExclusionMode>(u"list"), std::nullopt);
}

TEST(RemapFlags, BitsOfTheWord)
{
    EXPECT_EQ(command.rawValue(), 1);
    EXPECT_EQ(control.rawValue(), 2);
    EXPECT_EQ(option.rawValue(), 4);
    EXPECT_EQ(shift.rawValue(), 8);
    EXPECT_EQ(fn.rawValue(), 16);
}

TEST(RemapFlags, AreReadFromTheFiveBitsOfAnEventAlone)
{
    EXPECT_EQ(RemapFlags::fromEventFlags(0x100000), command);
    EXPECT_EQ(RemapFlags::fromEventFlags(0x40000), control);
    EXPECT_EQ(RemapFlags::fromEventFlags(0x80000), option);
    EXPECT_EQ(RemapFlags::fromEventFlags(0x20000), shift);
    EXPECT_EQ(RemapFlags::fromEventFlags(0x800000), fn);
    EXPECT_EQ(RemapFlags::fromEventFlags(~EventFlags{0x9E0000}), RemapFlags());
    EXPECT_EQ(RemapFlags::fromEventFlags(~EventFlags{0}), (RemapFlags{command, control, option, shift, fn}));
}

TEST(RemapFlags, AreMergedIntoAWordWhoseOtherBitsStay)
{
    const EventFlags word = 0x40000 | 0x10000 | 0x20 | 0x1; // control, caps lock, device bits
    EXPECT_EQ(RemapFlags({command, shift}).merged(word),
              EventFlags{0x100000 | 0x20000 | 0x10000 | 0x20 | 0x1});
    EXPECT_EQ(RemapFlags().merged(~EventFlags{0}), ~EventFlags{0x9E0000});
}

TEST(RemapFlags, SetAlgebra)
{
    RemapFlags flags{command, shift};
    EXPECT_TRUE(flags.contains(command));
    EXPECT_TRUE(flags.contains({}));
    EXPECT_FALSE(flags.contains({command, control}));
    EXPECT_EQ(flags.symmetricDifference({shift, fn}), (RemapFlags{command, fn}));
    EXPECT_EQ(flags.subtracting(shift), command);
    flags.insert(option);
    flags.remove(command);
    EXPECT_EQ(flags, (RemapFlags{option, shift}));
    EXPECT_FALSE(flags.isEmpty());
    EXPECT_TRUE(RemapFlags().isEmpty());
}

TEST(KeyChord, EqualityIsFieldByField)
{
    EXPECT_EQ((KeyChord{keyC, control}), (KeyChord{keyC, control}));
    EXPECT_NE((KeyChord{keyC, control}), (KeyChord{keyC, command}));
    EXPECT_NE((KeyChord{keyC, control}), (KeyChord{keyP, control}));
}

TEST(AppExclusion, TheDefaultDenylistIsSortedAndWhole)
{
    EXPECT_EQ(AppExclusion::defaultDenylist(),
              patterns({"com.apple.Terminal", "com.github.wez.wezterm", "com.googlecode.iterm2",
                        "com.jetbrains.*", "com.microsoft.VSCode", "com.mitchellh.ghostty",
                        "com.visualstudio.code.oss", "dev.warp.Warp-Stable", "io.alacritty",
                        "net.kovidgoyal.kitty", "org.alacritty", "org.gnu.Emacs", "org.vim.MacVim"}));
}

TEST(AppExclusion, TheTable)
{
    const QStringList some = patterns({"a.b"});
    for (const QStringList& list : {some, QStringList()}) {
        EXPECT_TRUE(remaps(nullptr, AppExclusionMode::denylist, list));
        EXPECT_FALSE(remaps(nullptr, AppExclusionMode::allowlist, list));
    }
    EXPECT_FALSE(remaps("a.b", AppExclusionMode::denylist, some));
    EXPECT_TRUE(remaps("a.b", AppExclusionMode::allowlist, some));
    EXPECT_TRUE(remaps("c.d", AppExclusionMode::denylist, some));
    EXPECT_FALSE(remaps("c.d", AppExclusionMode::allowlist, some));
}

TEST(AppExclusion, AnEmptyListMatchesNothing)
{
    EXPECT_FALSE(matches("a.b", {}));
    EXPECT_FALSE(matches("", {}));
}

TEST(AppExclusion, PatternsMatchExactlyAndByCase)
{
    EXPECT_TRUE(matches("com.apple.Terminal", {"x", "com.apple.Terminal"}));
    EXPECT_FALSE(matches("com.apple.terminal", {"com.apple.Terminal"}));
    EXPECT_FALSE(matches("com.apple.Terminal.helper", {"com.apple.Terminal"}));
}

TEST(AppExclusion, ATrailingDotStarMatchesWhatBeginsWithTheDot)
{
    EXPECT_TRUE(matches("com.jetbrains.intellij", {"com.jetbrains.*"}));
    EXPECT_TRUE(matches("com.jetbrains.", {"com.jetbrains.*"}));
    EXPECT_TRUE(matches("com.jetbrains.*", {"com.jetbrains.*"}));
    EXPECT_FALSE(matches("com.jetbrains", {"com.jetbrains.*"}));
    EXPECT_FALSE(matches("com.jetbrainsx", {"com.jetbrains.*"}));
    EXPECT_FALSE(matches("com.Jetbrains.x", {"com.jetbrains.*"}));
}

TEST(AppExclusion, AStarElsewhereIsALetter)
{
    EXPECT_FALSE(matches("anything", {"*"}));
    EXPECT_TRUE(matches("*", {"*"}));
    EXPECT_FALSE(matches("com.x.y", {"com.*.y"}));
    EXPECT_FALSE(matches("com.xy", {"com.x*"}));
    EXPECT_TRUE(matches(".hidden", {".*"}));
    EXPECT_FALSE(matches("hidden", {".*"}));
}
