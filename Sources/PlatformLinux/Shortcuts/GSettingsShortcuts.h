// The shortcuts of the desktops that keep them in GSettings: GNOME and its relatives, Cinnamon, MATE. The
// system's own `gsettings` reads them on a pool thread, and again when the settings' writer announces a
// change on the bus: this way the library isn't loaded into this process for a rare question. Main thread.
#pragma once

#include "PlatformLinux/Shortcuts/ShortcutSource.h"

#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>

namespace orvane {

/// The settings in which a desktop has its shortcuts.
struct GSettingsShortcutNames {
    QStringList schemas;
    /// The paths under which changes are announced.
    QStringList paths;
    /// For the shortcuts that the user has added: the setting that lists them, as schema and key, the schema
    /// of each, and the text before its name in the list when that is not a whole path.
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
    /// Ends with this object, so that a reading thread and its answer can see whether it still exists.
    std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
};

/// Returns the settings of the desktops by these names, as in XDG_CURRENT_DESKTOP; absent for all others.
std::optional<GSettingsShortcutNames> gsettingsShortcutNames(const QStringList& desktops);

} // namespace orvane
