#include "Capabilities/ClipboardHistory/Capture/SensitiveContentFilter.h"

#include <algorithm>

namespace orvane::SensitiveContentFilter {

bool shouldSkip(const QStringList& types, const std::optional<QString>& sourceApp,
                const QSet<QString>& excludedApps, bool ignoreConcealed)
{
    const auto isMarked = [&types](QLatin1StringView marker) { return types.contains(marker); };
    if (ignoreConcealed && std::ranges::any_of(markers, isMarked))
        return true;
    return sourceApp && excludedApps.contains(*sourceApp);
}

} // namespace orvane::SensitiveContentFilter
