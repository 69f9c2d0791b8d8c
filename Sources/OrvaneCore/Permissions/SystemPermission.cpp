#include "OrvaneCore/Permissions/SystemPermission.h"

#include "OrvaneCore/Base/CoreText.h"

namespace orvane {

namespace {

struct Texts {
    QString rawValue;
    QString displayName;
    QString explanation;
    QString settingsURLString;
};

const Texts& texts(SystemPermission permission)
{
    static const std::array table{
        Texts{
            QStringLiteral("accessibility"), CoreText::tr("Accessibility"),
            CoreText::tr("Move, focus, and read windows of other apps (Alt-Tab, cut & paste)."),
            QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility")},
        Texts{QStringLiteral("inputMonitoring"), CoreText::tr("Input Monitoring"),
              CoreText::tr("See keyboard and mouse input to remap keys and buttons."),
              QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent")},
        Texts{
            QStringLiteral("screenRecording"), CoreText::tr("Screen Recording"),
            CoreText::tr("Capture live window thumbnails for the switcher and dock previews."),
            QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture")},
        Texts{QStringLiteral("appleEvents"), CoreText::tr("Automation"),
              CoreText::tr("Ask Finder for the selected files and target folder (cut & paste)."),
              QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_Automation")},
    };
    return table.at(static_cast<std::size_t>(permission));
}

} // namespace

QString rawValue(SystemPermission permission)
{
    return texts(permission).rawValue;
}
QString displayName(SystemPermission permission)
{
    return texts(permission).displayName;
}
QString explanation(SystemPermission permission)
{
    return texts(permission).explanation;
}
QString settingsURLString(SystemPermission permission)
{
    return texts(permission).settingsURLString;
}

} // namespace orvane
