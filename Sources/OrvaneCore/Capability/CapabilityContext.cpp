#include "OrvaneCore/Capability/CapabilityContext.h"

#include "Platform/Bundle.h"
#include "Platform/FileManager.h"
#include "Platform/Platform.h"

namespace orvane {

AppInfo AppInfo::current(const CapabilityID& id)
{
    const QStringList directories = platform().fileManager.applicationSupportDirectories();
    if (directories.isEmpty())
        qFatal("The user has no application support directory");

    const Bundle& bundle = platform().mainBundle;
    const QVariant version = bundle.infoValue(QStringLiteral("CFBundleShortVersionString"));
    return {
        .bundleID = bundle.identifier().value_or(QStringLiteral("net.lindenrow.orvane")),
        .version = version.typeId() == QMetaType::QString ? version.toString() : QStringLiteral("0"),
        .supportDirectory = directories.first() + QStringLiteral("/Orvane/") + id.rawValue,
    };
}

} // namespace orvane
