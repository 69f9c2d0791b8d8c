// The shortcuts of the desktops that keep them in GSettings: GNOME and its kin, Cinnamon, MATE. They are read
// by the system's own `gsettings` on a pool thread, and again when the settings' writer tells of a change on
// the bus: nothing of that library stays in this process for the few times that somebody asks. Main thread.
#pragma once

#include "PlatformLinux/Shortcuts/ShortcutSource.h"

#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>

namespace orvane {

/// Which settings a desktop has its shortcuts in.
struct GSettingsShortcutNames {
    QStringList schemas;
    /// Under which the changes are told.
    QStringList paths;
    /// Of the shortcuts that the user has made himself: the setting that lists them, as schema and key, the
    /// schema of each, and what stands before its name in the list when that is no whole path.
    QString customListSchema, customListKey, customSchema, customPrefix;
};

class GSettingsShortcuts : public ShortcutSource {
    Q_OBJECT
public:
    explicit GSettingsShortcuts(GSettingsShortcutNames names);
    ~GSettingsShortcuts() override;
    void start(QDBusConnection* bus) override;

private Q_SLOTS:
    void noticeChange(const QString& prefix, const QStringList& changes);

private:
    void read();

    GSettingsShortcutNames m_names;
    QTimer m_changesEnd;
    /// Ends with this object, which a reading thread and its answer can tell by it.
    std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
};

/// Of the desktops by these names, as in XDG_CURRENT_DESKTOP; absent for all others.
std::optional<GSettingsShortcutNames> gsettingsShortcutNames(const QStringList& desktops);

} // namespace orvane
