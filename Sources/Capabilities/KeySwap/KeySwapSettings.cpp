#include "Capabilities/KeySwap/KeySwapSettings.h"

namespace orvane {

void KeySwapSettings::addExcludedApp(const QString& bundleID)
{
    QStringList apps = excludedApps.get();
    if (bundleID.isEmpty() || apps.contains(bundleID))
        return;
    apps.append(bundleID);
    excludedApps.set(apps);
}

void KeySwapSettings::removeExcludedApp(const QString& bundleID)
{
    QStringList apps = excludedApps.get();
    apps.removeOne(bundleID);
    excludedApps.set(apps);
}

} // namespace orvane
