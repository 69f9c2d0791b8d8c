#include "PlatformLinux/Applications/ApplicationIdentity.h"

#include "PlatformLinux/Applications/CommandConvention.h"
#include "PlatformLinux/Applications/KnownPrograms.h"

#include <array>
#include <utility>

namespace orvane {

namespace {

/// "jetbrains-idea-ce" is the class of such a program's window, and the id of its entry as its own installer
/// writes it.
std::optional<QString> jetBrainsProgram(const QString& name)
{
    constexpr QLatin1StringView prefix("jetbrains-");
    if (!name.startsWith(prefix, Qt::CaseInsensitive) || name.size() == prefix.size())
        return std::nullopt;
    // The products whose identifier isn't made from the name.
    static constexpr std::array renamed = std::to_array<std::pair<QLatin1StringView, QLatin1StringView>>({
        {QLatin1StringView("idea"), QLatin1StringView("intellij")},
        {QLatin1StringView("idea-ce"), QLatin1StringView("intellij.ce")},
        {QLatin1StringView("pycharm-ce"), QLatin1StringView("pycharm.ce")},
        {QLatin1StringView("clion"), QLatin1StringView("CLion")},
        {QLatin1StringView("webstorm"), QLatin1StringView("WebStorm")},
        {QLatin1StringView("phpstorm"), QLatin1StringView("PhpStorm")},
    });
    QString product = name.sliced(prefix.size()).toLower();
    for (const auto& [from, to] : renamed) {
        if (product == from) {
            product = to;
            break;
        }
    }
    return QString(QLatin1StringView("com.jetbrains.") + product);
}

} // namespace

std::optional<QString> bundleIdentifier(const ProgramTraits& traits)
{
    const QString file = traits.executable.section(u'/', -1);
    auto byFile = knownProgram(file);
    // People give windows of terminals classes of their own, often that of the program inside.
    if (byFile && commandKeys(byFile) == CommandKeys::controlShift)
        return byFile;
    for (const QString& name : {traits.windowClass, traits.desktopEntryID}) {
        if (auto known = knownProgram(name))
            return known;
        if (auto product = jetBrainsProgram(name))
            return product;
    }
    if (!traits.desktopEntryID.isEmpty())
        return traits.desktopEntryID;
    return byFile;
}

} // namespace orvane
