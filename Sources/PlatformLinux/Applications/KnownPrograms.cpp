#include "PlatformLinux/Applications/KnownPrograms.h"

#include <QHash>

#include <initializer_list>

namespace orvane {

namespace {

struct KnownProgram {
    QLatin1StringView identifier;
    /// In lower case.
    std::initializer_list<const char*> names;
};

const KnownProgram knownPrograms[] = {
    // xfdesktop is none of these: nothing tells which of its icons are selected.
    {systemProgram::fileManager,
     {"thunar", "org.xfce.thunar", "nautilus", "org.gnome.nautilus", "nemo", "nemo-desktop", "caja",
      "caja-browser", "dolphin", "org.kde.dolphin", "pcmanfm", "pcmanfm-qt", "io.elementary.files", "peony",
      "dde-file-manager", "com.system76.cosmicfiles"}},
    {systemProgram::dock,
     {"plank", "net.launchpad.plank", "cairo-dock", "latte-dock", "org.kde.latte-dock", "docky"}},

    // Terminals. Those that also exist elsewhere have their own identifiers.
    {systemProgram::terminal,
     {"xterm",
      "uxterm",
      "lxterm",
      "koi8rxterm",
      "debian-xterm",
      "debian-uxterm",
      "xfce4-terminal",
      "org.xfce.terminal",
      "gnome-terminal",
      "gnome-terminal-server",
      "org.gnome.terminal",
      "kgx",
      "org.gnome.console",
      "ptyxis",
      "org.gnome.ptyxis",
      "konsole",
      "org.kde.konsole",
      "yakuake",
      "org.kde.yakuake",
      "mate-terminal",
      "lxterminal",
      "qterminal",
      "qterminal-drop",
      "terminator",
      "tilix",
      "com.gexperts.tilix",
      "urxvt",
      "urxvtd",
      "rxvt",
      "rxvt-unicode",
      "aterm",
      "eterm",
      "mlterm",
      "st",
      "st-256color",
      "stterm",
      "guake",
      "tilda",
      "sakura",
      "roxterm",
      "terminology",
      "cool-retro-term",
      "deepin-terminal",
      "io.elementary.terminal",
      "com.raggesick.blackbox",
      "zutty",
      "contour"}},
    {QLatin1StringView("net.kovidgoyal.kitty"), {"kitty"}},
    {QLatin1StringView("org.alacritty"), {"alacritty"}},
    {QLatin1StringView("com.github.wez.wezterm"), {"wezterm", "wezterm-gui", "org.wezfurlong.wezterm"}},
    {QLatin1StringView("com.mitchellh.ghostty"), {"ghostty", "com.mitchellh.ghostty"}},
    {QLatin1StringView("dev.warp.Warp-Stable"), {"warp-terminal", "dev.warp.warp"}},
    {QLatin1StringView("co.zeit.hyper"), {"hyper"}},
    {QLatin1StringView("org.tabby"), {"tabby"}},
    {QLatin1StringView("com.raphaelamorim.rio"), {"rio"}},

    // Editors
    {QLatin1StringView("com.microsoft.VSCode"), {"code", "code-url-handler", "com.visualstudio.code"}},
    {QLatin1StringView("com.microsoft.VSCodeInsiders"), {"code-insiders", "code - insiders"}},
    {QLatin1StringView("com.visualstudio.code.oss"), {"code-oss", "code - oss", "com.visualstudio.code.oss"}},
    {QLatin1StringView("com.vscodium"), {"vscodium", "codium", "com.vscodium.codium"}},
    {QLatin1StringView("com.google.android.studio"),
     {"jetbrains-studio", "android-studio", "com.google.androidstudio"}},
    {QLatin1StringView("com.sublimetext.4"), {"sublime_text", "sublime-text"}},
    {QLatin1StringView("dev.zed.Zed"), {"zed", "zed-editor", "dev.zed.zed"}},
    {QLatin1StringView("org.gnu.Emacs"),
     {"emacs", "emacsclient", "emacs-gtk", "emacs-lucid", "emacs-pgtk", "org.gnu.emacs"}},
    {QLatin1StringView("org.vim.MacVim"), {"gvim", "vim.gtk3", "vim.gtk", "vim.athena", "org.vim.vim"}},
    {QLatin1StringView("com.neovide.neovide"), {"neovide"}},

    // Browsers and mail
    {QLatin1StringView("org.mozilla.firefox"),
     {"firefox", "firefox-esr", "firefox-bin", "org.mozilla.firefox", "firefox_firefox"}},
    {QLatin1StringView("org.mozilla.thunderbird"),
     {"thunderbird", "thunderbird-esr", "thunderbird-bin", "org.mozilla.thunderbird"}},
    {QLatin1StringView("com.google.Chrome"), {"google-chrome", "google-chrome-stable", "com.google.chrome"}},
    {QLatin1StringView("org.chromium.Chromium"),
     {"chromium", "chromium-browser", "org.chromium.chromium", "chromium_chromium"}},
    {QLatin1StringView("com.brave.Browser"), {"brave", "brave-browser", "com.brave.browser"}},
    {QLatin1StringView("com.microsoft.edgemac"),
     {"microsoft-edge", "microsoft-edge-stable", "com.microsoft.edge"}},
    {QLatin1StringView("com.vivaldi.Vivaldi"), {"vivaldi", "vivaldi-stable", "com.vivaldi.vivaldi"}},
    {QLatin1StringView("com.operasoftware.Opera"), {"opera", "com.opera.opera"}},

    // Password managers
    {QLatin1StringView("org.keepassxc.keepassxc"), {"keepassxc", "org.keepassxc.keepassxc"}},
    {QLatin1StringView("com.1password.1password"), {"1password", "com.onepassword.onepassword"}},
    {QLatin1StringView("com.bitwarden.desktop"), {"bitwarden", "com.bitwarden.desktop"}},

    // Others
    {QLatin1StringView("com.tinyspeck.slackmacgap"), {"slack", "com.slack.slack"}},
    {QLatin1StringView("com.hnc.Discord"), {"discord", "com.discordapp.discord"}},
    {QLatin1StringView("com.spotify.client"), {"spotify", "com.spotify.client"}},
    {QLatin1StringView("org.whispersystems.signal-desktop"),
     {"signal", "signal-desktop", "org.signal.signal"}},
    {QLatin1StringView("md.obsidian"), {"obsidian", "md.obsidian.obsidian"}},
    {QLatin1StringView("org.videolan.vlc"), {"vlc", "org.videolan.vlc"}},
    {QLatin1StringView("org.inkscape.Inkscape"), {"inkscape", "org.inkscape.inkscape"}},
    {QLatin1StringView("org.blenderfoundation.blender"), {"blender", "org.blender.blender"}},
};

QHash<QString, QString> identifiersByName()
{
    QHash<QString, QString> identifiers;
    for (const KnownProgram& program : knownPrograms) {
        for (const char* name : program.names) {
            Q_ASSERT(!identifiers.contains(QLatin1StringView(name)));
            identifiers.insert(QString::fromLatin1(name), program.identifier);
        }
    }
    return identifiers;
}

} // namespace

std::optional<QString> knownProgram(QStringView name)
{
    static const QHash<QString, QString> identifiers = identifiersByName();
    const auto found = identifiers.find(name.toString().toLower());
    return found == identifiers.end() ? std::nullopt : std::optional<QString>(*found);
}

} // namespace orvane
