#include "Capabilities/KeySwap/ListedApp.h"

#include "Capabilities/KeySwap/AppExclusion.h"
#include "OrvaneCore/Base/TextSource.h"

#include <array>

namespace orvane {

namespace {

struct KnownApp {
    QLatin1StringView identifier;
    TextSource name;
};

/// The programs of the default list, which most people have only a few of.
constexpr std::array knownApps{
    KnownApp{QLatin1StringView("com.apple.Terminal"), TextSource("KeySwapText", "Terminal")},
    KnownApp{QLatin1StringView("com.github.wez.wezterm"), TextSource("KeySwapText", "WezTerm")},
    KnownApp{QLatin1StringView("com.googlecode.iterm2"), TextSource("KeySwapText", "iTerm2")},
    KnownApp{QLatin1StringView("com.jetbrains.*"), TextSource("KeySwapText", "JetBrains IDEs")},
    KnownApp{QLatin1StringView("com.microsoft.VSCode"), TextSource("KeySwapText", "Visual Studio Code")},
    KnownApp{QLatin1StringView("com.mitchellh.ghostty"), TextSource("KeySwapText", "Ghostty")},
    KnownApp{QLatin1StringView("com.visualstudio.code.oss"), TextSource("KeySwapText", "Code - OSS")},
    KnownApp{QLatin1StringView("dev.warp.Warp-Stable"), TextSource("KeySwapText", "Warp")},
    KnownApp{QLatin1StringView("io.alacritty"), TextSource("KeySwapText", "Alacritty (before 0.5)")},
    KnownApp{QLatin1StringView("net.kovidgoyal.kitty"), TextSource("KeySwapText", "kitty")},
    KnownApp{QLatin1StringView("org.alacritty"), TextSource("KeySwapText", "Alacritty")},
    KnownApp{QLatin1StringView("org.gnu.Emacs"), TextSource("KeySwapText", "Emacs")},
    KnownApp{QLatin1StringView("org.vim.MacVim"), TextSource("KeySwapText", "MacVim")},
};

QString knownName(const QString& identifier)
{
    for (const KnownApp& app : knownApps) {
        if (identifier == app.identifier)
            return app.name.translated();
    }
    return identifier;
}

} // namespace

ListedApp listedApp(const QString& identifier, const QList<InstalledApplication>& installed)
{
    QList<InstalledApplication> found;
    for (const InstalledApplication& application : installed) {
        if (!AppExclusion::shouldRemap(application.bundleIdentifier, AppExclusionMode::denylist,
                                       {identifier}))
            found.append(application);
    }
    if (found.isEmpty())
        return {knownName(identifier), {}, false};
    const bool isOne = found.size() == 1;
    return {isOne ? found.first().localizedName : knownName(identifier), found.first().iconName, true};
}

} // namespace orvane
