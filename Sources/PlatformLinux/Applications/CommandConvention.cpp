#include "PlatformLinux/Applications/CommandConvention.h"

#include <algorithm>
#include <array>

namespace orvane {

namespace {

// Emacs and Vim with windows of their own aren't here: their keys for copying and pasting are configured in
// them, and Control is what the rest of the desktop would send.
constexpr std::array terminals = std::to_array<QLatin1StringView>({
    QLatin1StringView("com.apple.Terminal"),
    QLatin1StringView("com.github.wez.wezterm"),
    QLatin1StringView("com.googlecode.iterm2"),
    QLatin1StringView("com.mitchellh.ghostty"),
    QLatin1StringView("com.raphaelamorim.rio"),
    QLatin1StringView("co.zeit.hyper"),
    QLatin1StringView("dev.warp.Warp-Stable"),
    QLatin1StringView("io.alacritty"),
    QLatin1StringView("net.kovidgoyal.kitty"),
    QLatin1StringView("org.alacritty"),
    QLatin1StringView("org.tabby"),
});

} // namespace

CommandKeys commandKeys(const std::optional<QString>& bundleIdentifier)
{
    const bool isTerminal = bundleIdentifier && std::find(terminals.begin(), terminals.end(),
                                                          *bundleIdentifier) != terminals.end();
    return isTerminal ? CommandKeys::controlShift : CommandKeys::control;
}

} // namespace orvane
