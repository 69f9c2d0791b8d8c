#include "PlatformLinux/Applications/ApplicationIdentity.h"
#include "PlatformLinux/Applications/CommandConvention.h"
#include "PlatformLinux/Applications/KnownPrograms.h"

#include <gmock/gmock.h>

#include <ostream>

namespace orvane::tests {

namespace {

struct Case {
    const char* windowClass;
    const char* executable;
    const char* entry;
    const char* identifier;
};

std::ostream& operator<<(std::ostream& out, const Case& one)
{
    return out << one.windowClass << " | " << one.executable << " | " << one.entry;
}

std::optional<QString> identify(const Case& one)
{
    return bundleIdentifier({.windowClass = QString::fromLatin1(one.windowClass),
                             .executable = QString::fromLatin1(one.executable),
                             .desktopEntryID = QString::fromLatin1(one.entry)});
}

const QString terminal = systemProgram::terminal;

} // namespace

class IdentityOf : public ::testing::TestWithParam<Case> {};

TEST_P(IdentityOf, AProgram)
{
    EXPECT_EQ(identify(GetParam()), QString::fromLatin1(GetParam().identifier));
}

INSTANTIATE_TEST_SUITE_P(
    FileManagers, IdentityOf,
    ::testing::Values(Case{"Thunar", "/usr/bin/thunar", "thunar", "com.apple.finder"},
                      Case{"org.gnome.Nautilus", "/usr/bin/nautilus", "org.gnome.Nautilus",
                           "com.apple.finder"},
                      Case{"Nemo", "/usr/bin/nemo", "nemo", "com.apple.finder"},
                      Case{"Caja", "/usr/bin/caja", "caja-browser", "com.apple.finder"},
                      Case{"dolphin", "/usr/bin/dolphin", "org.kde.dolphin", "com.apple.finder"},
                      Case{"Pcmanfm", "/usr/bin/pcmanfm", "pcmanfm", "com.apple.finder"},
                      Case{"pcmanfm-qt", "/usr/bin/pcmanfm-qt", "pcmanfm-qt", "com.apple.finder"}));

INSTANTIATE_TEST_SUITE_P(Docks, IdentityOf,
                         ::testing::Values(Case{"Plank", "/usr/bin/plank", "plank", "com.apple.dock"},
                                           Case{"Cairo-dock", "/usr/bin/cairo-dock", "cairo-dock",
                                                "com.apple.dock"}));

INSTANTIATE_TEST_SUITE_P(
    Terminals, IdentityOf,
    ::testing::Values(
        Case{"XTerm", "/usr/bin/xterm", "debian-xterm", "com.apple.Terminal"},
        Case{"Xfce4-terminal", "/usr/bin/xfce4-terminal", "xfce4-terminal", "com.apple.Terminal"},
        Case{"Gnome-terminal", "/usr/libexec/gnome-terminal-server", "org.gnome.Terminal",
             "com.apple.Terminal"},
        Case{"konsole", "/usr/bin/konsole", "org.kde.konsole", "com.apple.Terminal"},
        Case{"Mate-terminal", "/usr/bin/mate-terminal", "mate-terminal", "com.apple.Terminal"},
        Case{"Lxterminal", "/usr/bin/lxterminal", "lxterminal", "com.apple.Terminal"},
        Case{"qterminal", "/usr/bin/qterminal", "qterminal", "com.apple.Terminal"},
        Case{"Terminator", "/usr/bin/python3.11", "terminator", "com.apple.Terminal"},
        Case{"Tilix", "/usr/bin/tilix", "com.gexperts.Tilix", "com.apple.Terminal"},
        Case{"URxvt", "/usr/bin/urxvtd", "", "com.apple.Terminal"},
        Case{"st-256color", "/usr/local/bin/st", "", "com.apple.Terminal"},
        Case{"kitty", "/usr/bin/kitty", "kitty", "net.kovidgoyal.kitty"},
        Case{"Alacritty", "/usr/bin/alacritty", "Alacritty", "org.alacritty"},
        Case{"org.wezfurlong.wezterm", "/usr/bin/wezterm-gui", "org.wezfurlong.wezterm",
             "com.github.wez.wezterm"},
        Case{"com.mitchellh.ghostty", "/usr/bin/ghostty", "com.mitchellh.ghostty", "com.mitchellh.ghostty"},
        Case{"dev.warp.Warp", "/opt/warpdotdev/warp-terminal/warp", "dev.warp.Warp",
             "dev.warp.Warp-Stable"}));

INSTANTIATE_TEST_SUITE_P(
    CrossPlatformPrograms, IdentityOf,
    ::testing::Values(
        Case{"Code", "/usr/share/code/code", "code", "com.microsoft.VSCode"},
        Case{"code-oss", "/usr/lib/electron/electron", "code-oss", "com.visualstudio.code.oss"},
        Case{"Emacs", "/usr/bin/emacs-gtk", "emacs", "org.gnu.Emacs"},
        Case{"Gvim", "/usr/bin/vim.gtk3", "gvim", "org.vim.MacVim"},
        Case{"firefox-esr", "/usr/lib/firefox-esr/firefox-esr", "firefox-esr", "org.mozilla.firefox"},
        Case{"Google-chrome", "/opt/google/chrome/chrome", "google-chrome", "com.google.Chrome"},
        Case{"KeePassXC", "/usr/bin/keepassxc", "org.keepassxc.KeePassXC", "org.keepassxc.keepassxc"}));

INSTANTIATE_TEST_SUITE_P(
    JetBrains, IdentityOf,
    ::testing::Values(Case{"jetbrains-idea", "/opt/idea/jbr/bin/java", "jetbrains-idea",
                           "com.jetbrains.intellij"},
                      Case{"jetbrains-idea-ce", "/opt/idea/jbr/bin/java", "", "com.jetbrains.intellij.ce"},
                      Case{"jetbrains-pycharm", "", "", "com.jetbrains.pycharm"},
                      Case{"jetbrains-rustrover", "", "jetbrains-rustrover", "com.jetbrains.rustrover"},
                      Case{"jetbrains-studio", "", "android-studio", "com.google.android.studio"}));

INSTANTIATE_TEST_SUITE_P(EveryOtherProgram, IdentityOf,
                         ::testing::Values(Case{"Mousepad", "/usr/bin/mousepad", "org.xfce.mousepad",
                                                "org.xfce.mousepad"},
                                           Case{"crx_abc", "/opt/google/chrome/chrome", "chrome-abc-Default",
                                                "chrome-abc-Default"},
                                           // The name only begins like that of a JetBrains program.
                                           Case{"jetbrains-", "", "some-entry", "some-entry"}));

TEST(ApplicationIdentity, CaseOfTheNamesIsIgnored)
{
    EXPECT_EQ(identify({"THUNAR", "", "", ""}), QString(systemProgram::fileManager));
}

TEST(ApplicationIdentity, ATerminalIsOneWhateverClassItsWindowsWereGiven)
{
    EXPECT_EQ(identify({"Vim", "/usr/bin/xterm", "vim", ""}), terminal);
    EXPECT_EQ(identify({"Emacs", "/usr/bin/kitty", "emacs", ""}), QStringLiteral("net.kovidgoyal.kitty"));
}

TEST(ApplicationIdentity, AnInterpretersFileSaysNothing)
{
    EXPECT_EQ(identify({"Foo", "/usr/bin/python3.11", "foo", ""}), QStringLiteral("foo"));
}

TEST(ApplicationIdentity, TheFileDecidesWhereNothingElseTells)
{
    EXPECT_EQ(identify({"Unheard", "/usr/bin/nautilus", "", ""}), QString(systemProgram::fileManager));
}

TEST(ApplicationIdentity, AProgramThatNothingTellsOfHasNone)
{
    EXPECT_EQ(identify({"Unheard", "/home/me/bin/unheard", "", ""}), std::nullopt);
    EXPECT_EQ(identify({"", "", "", ""}), std::nullopt);
}

TEST(CommandConvention, TerminalsTakeControlWithShift)
{
    for (const char* identifier : {"com.apple.Terminal", "net.kovidgoyal.kitty", "org.alacritty",
                                   "com.github.wez.wezterm", "com.mitchellh.ghostty", "dev.warp.Warp-Stable"})
        EXPECT_EQ(commandKeys(QString::fromLatin1(identifier)), CommandKeys::controlShift) << identifier;
}

TEST(CommandConvention, EverythingElseTakesControl)
{
    for (const char* identifier : {"com.apple.finder", "com.microsoft.VSCode", "com.jetbrains.intellij",
                                   "org.gnu.Emacs", "org.vim.MacVim", "org.mozilla.firefox", ""})
        EXPECT_EQ(commandKeys(QString::fromLatin1(identifier)), CommandKeys::control) << identifier;
    EXPECT_EQ(commandKeys(std::nullopt), CommandKeys::control);
}

} // namespace orvane::tests
