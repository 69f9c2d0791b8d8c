#include "PlatformLinux/Shortcuts/Accelerator.h"
#include "Platform/HotKeys.h"

#include <gtest/gtest.h>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvane::tests {
namespace {

using namespace carbonModifier;

Accelerator key(std::uint32_t modifiers, std::uint32_t keysym)
{
    return {modifiers, keysym, {}};
}

} // namespace

TEST(GtkAccelerator, ItsModifiersStandBeforeTheKey)
{
    EXPECT_EQ(parseGtkAccelerator(u"<Primary><Alt>t"), key(control | option, XKB_KEY_t));
    EXPECT_EQ(parseGtkAccelerator(u"<Super>F12"), key(command, XKB_KEY_F12));
    EXPECT_EQ(parseGtkAccelerator(u"<Shift><Control>Page_Down"), key(shift | control, XKB_KEY_Page_Down));
    EXPECT_EQ(parseGtkAccelerator(u"Print"), key(0, XKB_KEY_Print));
}

TEST(GtkAccelerator, EachModifierHasSeveralNamesInAnyCase)
{
    for (const QStringView name : {u"<Control>a", u"<ctrl>a", u"<CTL>a", u"<Primary>a"})
        EXPECT_EQ(parseGtkAccelerator(name), key(control, XKB_KEY_a)) << name.toString().toStdString();
    EXPECT_EQ(parseGtkAccelerator(u"<Mod1>a"), key(option, XKB_KEY_a));
    EXPECT_EQ(parseGtkAccelerator(u"<Mod4>a"), key(command, XKB_KEY_a));
    EXPECT_EQ(parseGtkAccelerator(u"<Release><Shft>a"), key(shift, XKB_KEY_a));
}

TEST(GtkAccelerator, ACapitalLetterIsTheKeyOfTheSmallOne)
{
    EXPECT_EQ(parseGtkAccelerator(u"<Super>L"), key(command, XKB_KEY_l));
}

TEST(GtkAccelerator, TheKeyAboveTabIsMeantByItsPlace)
{
    EXPECT_EQ(parseGtkAccelerator(u"<Alt>Above_Tab"), (Accelerator{option, 0, 0x32}));
}

TEST(GtkAccelerator, WhatIsNoShortcutGivesNothing)
{
    for (const QStringView text : {u"", u"disabled", u"<Hyper>a", u"<Alt", u"<Alt>", u"<Alt>NoSuchKey",
                                   u"/org/gnome/custom0/", u"<Primary><Alt>t/startup-notify"})
        EXPECT_EQ(parseGtkAccelerator(text), std::nullopt) << text.toString().toStdString();
}

TEST(KdeAccelerator, IsJoinedByPlusSigns)
{
    EXPECT_EQ(parseKdeAccelerator(u"Alt+F4"), key(option, XKB_KEY_F4));
    EXPECT_EQ(parseKdeAccelerator(u"Meta+Ctrl+Esc"), key(command | control, XKB_KEY_Escape));
    EXPECT_EQ(parseKdeAccelerator(u"Ctrl+Alt+Shift+Del"), key(control | option | shift, XKB_KEY_Delete));
    EXPECT_EQ(parseKdeAccelerator(u"Meta+D"), key(command, XKB_KEY_d));
    EXPECT_EQ(parseKdeAccelerator(u"Meta++"), key(command, XKB_KEY_plus));
    EXPECT_EQ(parseKdeAccelerator(u"Volume Up"), key(0, XKB_KEY_XF86AudioRaiseVolume));
    EXPECT_EQ(parseKdeAccelerator(u"Search"), key(0, XKB_KEY_XF86Search));
}

TEST(KdeAccelerator, WhatIsNoShortcutOfOneKeyGivesNothing)
{
    for (const QStringView text : {u"", u"none", u"Meta+K, Meta+S", u"Hyper+A", u"Ctrl+", u"Meta+Ctrl"})
        EXPECT_EQ(parseKdeAccelerator(text), std::nullopt) << text.toString().toStdString();
}

TEST(KdeShortcutsFile, GivesWhatIsInForceAndNotTheDefaults)
{
    const QString file = uR"([kwin]
_k_friendly_name=KWin
Window Close=Alt+F4\tMeta+Q,Alt+F4,Close Window
Show Desktop=none,Meta+D,Peek at Desktop
Smaller=Meta+\\,,Meta+\\,,Smaller
# Kill=Meta+Ctrl+Esc
[services][org.kde.konsole.desktop]
_launch=Ctrl+Alt+T
)"_qs;
    const QList<Accelerator> expected{key(option, XKB_KEY_F4), key(command, XKB_KEY_q),
                                      key(command, XKB_KEY_comma), key(control | option, XKB_KEY_t)};
    EXPECT_EQ(parseKdeShortcutsFile(file), expected);
}

TEST(VariantStrings, AreTakenOutOfTheirQuotes)
{
    EXPECT_EQ(stringsInVariant(u"org.x close ['<Alt>F4', '<Super>q']"),
              (QStringList{u"<Alt>F4"_qs, u"<Super>q"_qs}));
    EXPECT_EQ(stringsInVariant(u"\"<Alt>'\""), QStringList{u"<Alt>'"_qs});
    EXPECT_EQ(stringsInVariant(uR"('a\'b')"), QStringList{u"a'b"_qs});
    EXPECT_EQ(stringsInVariant(u"@as []"), QStringList());
    EXPECT_EQ(stringsInVariant(u"'unfinished"), QStringList());
}

TEST(XfconfShortcuts, TheDefaultListIsInForceUntilThereIsAnOwnOne)
{
    QVariantMap properties{{u"/commands/default/<Alt>F2"_qs, u"run"_qs},
                           {u"/commands/default/<Alt>F2/startup-notify"_qs, true},
                           {u"/commands/custom/<Alt>F3"_qs, u"find"_qs},
                           {u"/xfwm4/default/<Alt>F4"_qs, u"close_window_key"_qs},
                           {u"/xfwm4/default/Escape"_qs, u"cancel_key"_qs},
                           {u"/xfwm4/default/<Alt>F5"_qs, QString()}};
    EXPECT_EQ(acceleratorsOfXfconf(properties),
              (QList<Accelerator>{key(option, XKB_KEY_F2), key(option, XKB_KEY_F4)}));
    properties.insert(u"/commands/custom/override"_qs, true);
    EXPECT_EQ(acceleratorsOfXfconf(properties),
              (QList<Accelerator>{key(option, XKB_KEY_F3), key(option, XKB_KEY_F4)}));
}

} // namespace orvane::tests
