#include "PlatformLinux/Shortcuts/DesktopShortcuts.h"

#include "Platform/HotKeys.h"
#include "PlatformLinux/Common/SessionBusLink.h"
#include "PlatformLinux/Keys/KeymapTables.h"
#include "PlatformLinux/Keys/ServerKeymap.h"
#include "PlatformLinux/Shortcuts/GSettingsShortcuts.h"
#include "PlatformLinux/Shortcuts/KdeShortcuts.h"
#include "PlatformLinux/Shortcuts/XfconfShortcuts.h"

#include <QGuiApplication>

namespace orvane {

namespace {

std::vector<std::unique_ptr<ShortcutSource>> sourcesOf(const QStringList& desktops)
{
    std::vector<std::unique_ptr<ShortcutSource>> sources;
    // A session put together by hand often has parts of Xfce and no name.
    if (desktops.isEmpty() || desktops.contains(QLatin1String("XFCE")))
        sources.push_back(std::make_unique<XfconfShortcuts>());
    if (auto names = gsettingsShortcutNames(desktops))
        sources.push_back(std::make_unique<GSettingsShortcuts>(std::move(*names)));
    if (desktops.contains(QLatin1String("KDE")))
        sources.push_back(std::make_unique<KdeShortcuts>(KdeShortcuts::standardPath()));
    return sources;
}

std::optional<DesktopShortcuts::Shortcut> onKeymap(const Accelerator& accelerator, const KeymapTables& tables)
{
    const int modifiers = static_cast<int>(accelerator.modifiers);
    if (accelerator.virtualKeyCode)
        return DesktopShortcuts::Shortcut{*accelerator.virtualKeyCode, modifiers};
    const auto place = tables.placeOf(accelerator.keysym);
    if (!place)
        return std::nullopt;
    const int shift =
        place->level == KeymapTables::Place::Level::shifted ? static_cast<int>(carbonModifier::shift) : 0;
    return DesktopShortcuts::Shortcut{place->keyCode, modifiers | shift};
}

} // namespace

DesktopShortcuts::DesktopShortcuts(ServerKeymap& keymap, const QStringList& desktops)
    : m_keymap(keymap), m_sources(sourcesOf(desktops))
{
    for (const auto& source : m_sources)
        connect(source.get(), &ShortcutSource::changed, this, &DesktopShortcuts::changed);
    const auto startWhenActive = [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            start();
    };
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, startWhenActive);
    startWhenActive(QGuiApplication::applicationState());
}

DesktopShortcuts::~DesktopShortcuts() = default;

QStringList DesktopShortcuts::desktopsOfSession()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'), Qt::SkipEmptyParts);
}

void DesktopShortcuts::start()
{
    if (m_link || m_sources.empty())
        return;
    m_link = std::make_unique<SessionBusLink>();
    connect(m_link.get(), &SessionBusLink::ready, this, [this] {
        for (const auto& source : m_sources)
            source->start(&m_link->bus());
    });
    connect(m_link.get(), &SessionBusLink::failed, this, [this] {
        for (const auto& source : m_sources)
            source->start(nullptr);
    });
    m_link->open();
}

QList<DesktopShortcuts::Shortcut> DesktopShortcuts::shortcuts()
{
    start();
    QList<Shortcut> found;
    const auto tables = m_keymap.tables();
    if (!tables)
        return found;
    for (const auto& source : m_sources) {
        for (const Accelerator& accelerator : source->accelerators()) {
            const auto shortcut = onKeymap(accelerator, *tables);
            if (shortcut && !found.contains(*shortcut))
                found.append(*shortcut);
        }
    }
    return found;
}

} // namespace orvane
