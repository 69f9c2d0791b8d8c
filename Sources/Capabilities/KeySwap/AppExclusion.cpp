#include "Capabilities/KeySwap/AppExclusion.h"

#include <algorithm>

namespace orvane {

const QStringList& AppExclusion::defaultDenylist()
{
    static const QStringList list{
        QStringLiteral("com.apple.Terminal"),
        QStringLiteral("com.github.wez.wezterm"),
        QStringLiteral("com.googlecode.iterm2"),
        QStringLiteral("com.jetbrains.*"),
        QStringLiteral("com.microsoft.VSCode"),
        QStringLiteral("com.mitchellh.ghostty"),
        QStringLiteral("com.visualstudio.code.oss"),
        QStringLiteral("dev.warp.Warp-Stable"),
        QStringLiteral("io.alacritty"),
        QStringLiteral("net.kovidgoyal.kitty"),
        QStringLiteral("org.alacritty"),
        QStringLiteral("org.gnu.Emacs"),
        QStringLiteral("org.vim.MacVim"),
    };
    return list;
}

namespace {

bool matches(const QString& bundleID, const QStringList& list)
{
    return std::ranges::any_of(list, [&](const QString& pattern) {
        return pattern == bundleID || (pattern.endsWith(QLatin1StringView(".*")) &&
                                       bundleID.startsWith(QStringView(pattern).chopped(1)));
    });
}

} // namespace

bool AppExclusion::shouldRemap(const std::optional<QString>& bundleID, AppExclusionMode mode,
                               const QStringList& list)
{
    const bool isListed = bundleID && matches(*bundleID, list);
    return isListed == (mode == AppExclusionMode::allowlist);
}

} // namespace orvane
