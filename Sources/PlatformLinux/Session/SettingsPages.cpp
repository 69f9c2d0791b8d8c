#include "PlatformLinux/Session/SettingsPages.h"

#include <algorithm>
#include <initializer_list>

namespace orvane {

namespace {

const QString scheme = QStringLiteral("x-apple.systempreferences:");

struct Page {
    /// The text after the "?" of the URL.
    const char* anchor;
    const char* command;
};

enum class Runs { onItsDesktop, anywhere };

struct Suite {
    /// Names as in XDG_CURRENT_DESKTOP.
    std::initializer_list<const char*> desktops;
    Runs runs;
    const char* frontPage;
    std::initializer_list<Page> pages;
};

constexpr const char* accessibility = "Privacy_Accessibility";
constexpr const char* input = "Privacy_ListenEvent";
constexpr const char* screen = "Privacy_ScreenCapture";
constexpr const char* automation = "Privacy_Automation"; // the page where the file manager is chosen

const Suite suites[] = {
    {{"XFCE"},
     Runs::anywhere,
     "xfce4-settings-manager",
     {{accessibility, "xfce4-accessibility-settings"},
      {input, "xfce4-keyboard-settings"},
      {screen, "xfce4-display-settings"},
      {automation, "xfce4-mime-settings"}}},
    {{"GNOME", "Unity", "Budgie", "GNOME-Classic"},
     Runs::onItsDesktop,
     "gnome-control-center",
     {{accessibility, "gnome-control-center universal-access"},
      {input, "gnome-control-center keyboard"},
      {screen, "gnome-control-center display"},
      {automation, "gnome-control-center default-apps"}}},
    {{"X-Cinnamon", "Cinnamon"},
     Runs::onItsDesktop,
     "cinnamon-settings",
     {{accessibility, "cinnamon-settings universal-access"},
      {input, "cinnamon-settings keyboard"},
      {screen, "cinnamon-settings display"},
      {automation, "cinnamon-settings default"}}},
    {{"MATE"},
     Runs::anywhere,
     "mate-control-center",
     {{accessibility, "mate-at-properties"},
      {input, "mate-keyboard-properties"},
      {screen, "mate-display-properties"},
      {automation, "mate-default-applications-properties"}}},
    {{"KDE"},
     Runs::anywhere,
     "systemsettings",
     {{accessibility, "systemsettings kcm_access"},
      {input, "systemsettings kcm_keyboard"},
      {screen, "systemsettings kcm_kscreen"},
      {automation, "systemsettings kcm_componentchooser"}}},
    {{"LXQt"},
     Runs::anywhere,
     "lxqt-config",
     {{input, "lxqt-config-input"}, {screen, "lxqt-config-monitor"}}},
};

SettingsCommand commandOf(const char* words)
{
    QStringList arguments = QString::fromLatin1(words).split(u' ');
    const QString program = arguments.takeFirst();
    return {program, arguments};
}

void append(QList<SettingsCommand>& commands, const Suite& suite, const QString& anchor)
{
    for (const Page& page : suite.pages) {
        if (anchor == QLatin1StringView(page.anchor))
            commands.append(commandOf(page.command));
    }
    commands.append(commandOf(suite.frontPage));
}

} // namespace

bool isSettingsURL(const QString& url)
{
    return url.startsWith(scheme, Qt::CaseInsensitive);
}

QList<SettingsCommand> settingsCommands(const QString& url, const QStringList& currentDesktops)
{
    const QString anchor = url.section(u'?', 1);
    const auto isKnown = [&](const char* known) { return anchor == QLatin1StringView(known); };
    const auto anchors = {accessibility, input, screen, automation};
    if (!isSettingsURL(url) || std::none_of(anchors.begin(), anchors.end(), isKnown))
        return {};

    const auto isOfSession = [&](const Suite& suite) {
        return std::any_of(suite.desktops.begin(), suite.desktops.end(), [&](const char* desktop) {
            return currentDesktops.contains(QLatin1StringView(desktop));
        });
    };
    QList<SettingsCommand> commands;
    for (const Suite& suite : suites) {
        if (isOfSession(suite))
            append(commands, suite, anchor);
    }
    for (const Suite& suite : suites) {
        if (!isOfSession(suite) && suite.runs == Runs::anywhere)
            append(commands, suite, anchor);
    }
    return commands;
}

} // namespace orvane
