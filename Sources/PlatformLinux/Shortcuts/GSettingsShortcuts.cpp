#include "PlatformLinux/Shortcuts/GSettingsShortcuts.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QProcess>
#include <QThreadPool>

#include <algorithm>
#include <chrono>

namespace orvane {

namespace {

using namespace std::chrono_literals;

constexpr auto changesGatheringTime = 200ms;
/// The tool answers within some milliseconds.
constexpr std::chrono::milliseconds longestAnswer = 3s;

/// Returns the output of the tool; nothing when it fails, as it does for a schema that isn't installed.
QString gsettings(const QStringList& arguments)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::SeparateChannels);
    tool.start(QStringLiteral("gsettings"), arguments, QIODevice::ReadOnly);
    if (!tool.waitForFinished(static_cast<int>(longestAnswer.count()))) {
        tool.kill();
        tool.waitForFinished();
        return {};
    }
    return tool.exitCode() == 0 ? QString::fromUtf8(tool.readAllStandardOutput()) : QString();
}

void append(QList<Accelerator>& accelerators, const QString& printed)
{
    for (const QString& text : stringsInVariant(printed)) {
        if (const auto accelerator = parseGtkAccelerator(text))
            accelerators.append(*accelerator);
    }
}

/// Blocks for as long as the tool takes.
QList<Accelerator> readShortcuts(const GSettingsShortcutNames& names, const std::weak_ptr<const bool>& life)
{
    QList<Accelerator> found;
    for (const QString& schema : names.schemas) {
        if (life.expired())
            return {};
        append(found, gsettings({QStringLiteral("list-recursively"), schema}));
    }
    if (names.customListKey.isEmpty())
        return found;
    const QString list = gsettings({QStringLiteral("get"), names.customListSchema, names.customListKey});
    for (const QString& custom : stringsInVariant(list)) {
        if (life.expired())
            return {};
        const QString path =
            custom.startsWith(QLatin1Char('/')) ? custom : names.customPrefix + custom + QLatin1Char('/');
        append(found, gsettings({QStringLiteral("get"), names.customSchema + QLatin1Char(':') + path,
                                 QStringLiteral("binding")}));
    }
    return found;
}

const GSettingsShortcutNames gnome{
    {QStringLiteral("org.gnome.desktop.wm.keybindings"), QStringLiteral("org.gnome.mutter.keybindings"),
     QStringLiteral("org.gnome.shell.keybindings"),
     QStringLiteral("org.gnome.settings-daemon.plugins.media-keys")},
    {QStringLiteral("/org/gnome/desktop/wm/keybindings/"), QStringLiteral("/org/gnome/mutter/keybindings/"),
     QStringLiteral("/org/gnome/shell/keybindings/"),
     QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/")},
    QStringLiteral("org.gnome.settings-daemon.plugins.media-keys"),
    QStringLiteral("custom-keybindings"),
    QStringLiteral("org.gnome.settings-daemon.plugins.media-keys.custom-keybinding"),
    {}};

const GSettingsShortcutNames cinnamon{
    {QStringLiteral("org.cinnamon.desktop.keybindings"),
     QStringLiteral("org.cinnamon.desktop.keybindings.wm"),
     QStringLiteral("org.cinnamon.desktop.keybindings.media-keys")},
    {QStringLiteral("/org/cinnamon/desktop/keybindings/")},
    QStringLiteral("org.cinnamon.desktop.keybindings"),
    QStringLiteral("custom-list"),
    QStringLiteral("org.cinnamon.desktop.keybindings.custom-keybinding"),
    QStringLiteral("/org/cinnamon/desktop/keybindings/custom-keybindings/")};

// No setting lists the shortcuts that a user of MATE has added; those stay unknown.
const GSettingsShortcutNames mate{
    {QStringLiteral("org.mate.Marco.global-keybindings"), QStringLiteral("org.mate.Marco.window-keybindings"),
     QStringLiteral("org.mate.SettingsDaemon.plugins.media-keys")},
    {QStringLiteral("/org/mate/marco/"), QStringLiteral("/org/mate/settings-daemon/plugins/media-keys/")},
    {},
    {},
    {},
    {}};

} // namespace

std::optional<GSettingsShortcutNames> gsettingsShortcutNames(const QStringList& desktops)
{
    for (const QString& desktop : desktops) {
        if (desktop == QLatin1String("X-Cinnamon") || desktop == QLatin1String("Cinnamon"))
            return cinnamon;
        if (desktop == QLatin1String("MATE"))
            return mate;
        for (const char* kin : {"GNOME", "GNOME-Classic", "GNOME-Flashback", "Unity", "Budgie", "ubuntu"}) {
            if (desktop == QLatin1String(kin))
                return gnome;
        }
    }
    return std::nullopt;
}

GSettingsShortcuts::GSettingsShortcuts(GSettingsShortcutNames names) : m_names(std::move(names))
{
    m_changesEnd.setSingleShot(true);
    m_changesEnd.setInterval(changesGatheringTime);
    connect(&m_changesEnd, &QTimer::timeout, this, &GSettingsShortcuts::read);
}

GSettingsShortcuts::~GSettingsShortcuts() = default;

void GSettingsShortcuts::start(QDBusConnection* bus)
{
    if (bus)
        bus->connect({}, {}, QStringLiteral("ca.desrt.dconf.Writer"), QStringLiteral("Notify"), this,
                     SLOT(noticeChange(QString, QStringList)));
    read();
}

/// `changes` are relative to `prefix`, and one of them may be empty: the prefix itself.
void GSettingsShortcuts::noticeChange(const QString& prefix, const QStringList& changes)
{
    const bool concernsUs = std::ranges::any_of(changes, [&](const QString& change) {
        const QString changed = prefix + change;
        return std::ranges::any_of(m_names.paths, [&](const QString& path) {
            return changed.startsWith(path) || path.startsWith(changed);
        });
    });
    if (concernsUs)
        m_changesEnd.start();
}

void GSettingsShortcuts::read()
{
    QThreadPool::globalInstance()->start([this, names = m_names, life = std::weak_ptr(m_life)] {
        auto found = readShortcuts(names, life);
        // The call goes through the application object: only its thread can tell whether this object still
        // exists.
        QMetaObject::invokeMethod(
            qApp,
            [this, life, found = std::move(found)] {
                if (!life.expired())
                    set(found);
            },
            Qt::QueuedConnection);
    });
}

} // namespace orvane
