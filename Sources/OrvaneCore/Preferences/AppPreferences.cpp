#include "OrvaneCore/Preferences/AppPreferences.h"

#include "OrvaneCore/Preferences/LaunchAtLogin.h"
#include "Platform/DefaultsStore.h"

#include <exception>

namespace orvane {

namespace {

const QString showDockIconKey = QStringLiteral("app.showDockIcon");
const QString showMenuBarItemKey = QStringLiteral("app.showMenuBarItem");

constexpr bool showDockIconDefault = false;
constexpr bool showMenuBarItemDefault = true;

/// A stored value that is neither a truth value nor a number counts as absent. A damaged file must not hide
/// the program.
bool storedFlag(const DefaultsStore& defaults, const QString& key, bool defaultValue)
{
    switch (defaults.object(key).typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return defaults.boolean(key);
    default:
        return defaultValue;
    }
}

} // namespace

AppPreferences::AppPreferences(DefaultsStore& defaults) : m_defaults(defaults)
{
    defaults.registerDefaults(
        {{showDockIconKey, showDockIconDefault}, {showMenuBarItemKey, showMenuBarItemDefault}});
    m_showDockIcon.set(storedFlag(defaults, showDockIconKey, showDockIconDefault));
    m_showMenuBarItem.set(storedFlag(defaults, showMenuBarItemKey, showMenuBarItemDefault));
    if (!showDockIcon() && !showMenuBarItem())
        setShowMenuBarItem(true);
    m_launchAtLogin.set(LaunchAtLogin::isEnabled());

    for (Observable<bool>* property : {&m_showDockIcon, &m_showMenuBarItem, &m_launchAtLogin})
        m_cancellables.push_back(property->onChange([this] { announceChange(); }));
}

void AppPreferences::setShowDockIcon(bool value)
{
    m_showDockIcon.set(value);
    if (!showDockIcon() && !showMenuBarItem())
        setShowMenuBarItem(true);
    m_defaults.set(showDockIconKey, showDockIcon());
}

void AppPreferences::setShowMenuBarItem(bool value)
{
    m_showMenuBarItem.set(value);
    if (!showMenuBarItem() && !showDockIcon())
        setShowDockIcon(true);
    m_defaults.set(showMenuBarItemKey, showMenuBarItem());
}

void AppPreferences::setLaunchAtLogin(bool value)
{
    m_launchAtLogin.set(value);
    if (value == LaunchAtLogin::isEnabled())
        return;
    try {
        LaunchAtLogin::set(value);
    } catch (const std::exception&) {
        // The switch that goes back shows the refusal; nothing else is reported.
    }
    const bool actual = LaunchAtLogin::isEnabled();
    if (launchAtLogin() != actual)
        setLaunchAtLogin(actual);
}

} // namespace orvane
