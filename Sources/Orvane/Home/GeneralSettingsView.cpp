#include "Orvane/Home/GeneralSettingsView.h"

#include "KeyboardShortcuts/Recorder/Recorder.h"
#include "Orvane/Brand/OrvaneBrand.h"
#include "Orvane/Brand/ShellText.h"
#include "Orvane/Home/HomeNavigation.h"
#include "Orvane/Navigation/OrvaNavigation.h"
#include "Orvane/Permissions/OrvaPermissionRow.h"
#include "Orvane/Permissions/PermissionRestartRow.h"
#include "OrvaneCore/Permissions/PermissionManager.h"
#include "OrvaneCore/Preferences/AppPreferences.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Model/OrvaLayout.h"
#include "OrvaneKit/Model/OrvaPage.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Model/OrvaSection.h"
#include "Platform/Bundle.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

namespace orvane {

namespace {

constexpr double aboutIcon = 52;
constexpr double aboutWordmark = 17;
constexpr double aboutGap = 14;
constexpr double aboutLineGap = 2;

Binding<bool> preference(const std::shared_ptr<AppPreferences>& preferences,
                         bool (AppPreferences::*get)() const, void (AppPreferences::*set)(bool))
{
    return Binding<bool>([preferences, get] { return ((*preferences).*get)(); },
                         [preferences, set](bool value) { ((*preferences).*set)(value); }, {preferences});
}

AnyView startupSection(const std::shared_ptr<AppPreferences>& preferences)
{
    return OrvaSection{.title = ShellText::tr("Startup"),
                       .systemImage = QStringLiteral("power"),
                       .content = {OrvaToggleRow(ShellText::tr("Launch Orvane at login"),
                                                 preference(preferences, &AppPreferences::launchAtLogin,
                                                            &AppPreferences::setLaunchAtLogin))}};
}

AnyView menuBarSection(const std::shared_ptr<AppPreferences>& preferences)
{
    return OrvaSection{
        .title = ShellText::tr("Menu Bar & Dock"),
        .systemImage = QStringLiteral("menubar.rectangle"),
        .footnote = ShellText::tr(
            "Orvane is menu-bar-first. With the Dock icon hidden it runs quietly in the menu bar — use the "
            "Open Orvane shortcut below to reach this window anytime."),
        .content = {OrvaToggleRow(ShellText::tr("Show menu bar icon"),
                                  preference(preferences, &AppPreferences::showMenuBarItem,
                                             &AppPreferences::setShowMenuBarItem)),
                    OrvaToggleRow(ShellText::tr("Show Dock icon"),
                                  preference(preferences, &AppPreferences::showDockIcon,
                                             &AppPreferences::setShowDockIcon))}};
}

AnyView permissionsSection(const GeneralSettingsView& view)
{
    QList<AnyView> rows;
    for (const SystemPermission permission : allSystemPermissions) {
        rows.append(
            OrvaPermissionRow{.permission = permission,
                              .note = GeneralSettingsView::usageText(permission, view.registry->entries()),
                              .permissions = view.permissions});
    }
    rows.append(PermissionRestartRow{});
    return OrvaAnchor{
        GeneralSettingsView::permissionsAnchor(),
        OrvaSection{
            .title = ShellText::tr("Permissions"),
            .systemImage = QStringLiteral("lock.shield"),
            .footnote = ShellText::tr(
                "Orvane only needs a permission for the features you turn on, and asks for it then. You can "
                "grant or revoke any of them here or in System Settings."),
            .content = rows}};
}

AnyView shortcutsSection()
{
    return OrvaSection{
        .title = ShellText::tr("Keyboard Shortcuts"),
        .systemImage = QStringLiteral("keyboard"),
        .content = {KeyboardShortcuts::Recorder(ShellText::tr("Open Orvane"),
                                                KeyboardShortcuts::Name(QStringLiteral("app.openOrvane")))}};
}

QString version()
{
    const QVariant value = platform().mainBundle.infoValue(QStringLiteral("CFBundleShortVersionString"));
    return value.typeId() == QMetaType::QString ? value.toString() : QStringLiteral("0.1.0");
}

AnyView webLink(const QString& title, const QString& url)
{
    return OrvaTextButton{
        .title = title, .action = [url] { platform().sharedWorkspace.openURL(url); }, .help = url};
}

AnyView aboutSection()
{
    const AnyView product =
        OrvaHStack{aboutGap,
                   {AppIconBadge{aboutIcon},
                    OrvaVStack{aboutLineGap,
                               {OrvaneWordmark{aboutWordmark},
                                OrvaText{ShellText::tr("Version %1").arg(version()), OrvaFont::caption,
                                         OrvaColor::secondary},
                                OrvaText{OrvaneBrand::tagline(), OrvaFont::caption, OrvaColor::secondary}}}}};
    return OrvaSection{
        .title = ShellText::tr("About"),
        .systemImage = QStringLiteral("info.circle"),
        .content = {OrvaRow{.content = {product}},
                    OrvaRow{.content = {webLink(ShellText::tr("Website"), OrvaneBrand::websiteURL),
                                        webLink(ShellText::tr("Privacy"), OrvaneBrand::privacyURL),
                                        webLink(ShellText::tr("Support"), OrvaneBrand::supportURL)}},
                    OrvaValueRow{ShellText::tr("Built by"), QStringLiteral("Lindenrow")}}};
}

} // namespace

QString GeneralSettingsView::usageText(SystemPermission permission,
                                       const QList<CapabilityRegistry::Entry>& entries)
{
    QStringList required;
    QStringList optional;
    for (const CapabilityRegistry::Entry& entry : entries) {
        const QString name = entry.metadata().displayName;
        if (entry.capability->requiredPermissions().contains(permission))
            required.append(name);
        if (entry.capability->optionalPermissions().contains(permission))
            optional.append(name);
    }
    QStringList parts;
    if (!required.isEmpty())
        parts.append(ShellText::tr("Required by %1").arg(required.join(QStringLiteral(", "))));
    if (!optional.isEmpty())
        parts.append(ShellText::tr("Optional for %1").arg(optional.join(QStringLiteral(", "))));
    return parts.isEmpty() ? explanation(permission) : parts.join(QStringLiteral(" · "));
}

AnyView GeneralSettingsView::body() const
{
    QList<AnyView> sections{startupSection(preferences), menuBarSection(preferences),
                            permissionsSection(*this), shortcutsSection()};
    if (updates)
        sections.append(updates);
    sections.append(aboutSection());

    const auto refresh = [permissions = permissions] { permissions->refresh(); };
    const Live<int> requests([navigation = navigation] { return navigation->focusPermissions.get(); },
                             {std::shared_ptr<ObservableObject>(navigation, &navigation->focusPermissions)});
    const OrvaPage page{
        .header = OrvaPageHeader{.symbol = QStringLiteral("gearshape"),
                                 .accent = OrvaColor::secondary,
                                 .title = ShellText::tr("General"),
                                 .subtitle = ShellText::tr("App-wide settings, permissions, and about.")},
        .content = OrvaPane{sections}};
    return OrvaTicker{tick, refresh, refresh, OrvaScrollReader{requests, permissionsAnchor(), page}};
}

} // namespace orvane
