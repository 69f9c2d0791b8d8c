#include "PlatformLinux/Applications/DesktopEntries.h"

#include "PlatformLinux/Common/XdgDirectories.h"
#include "PlatformLinux/Files/DesktopEntry.h"

#include <QCollator>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>

namespace orvane {

namespace {

const QString suffix = QStringLiteral(".desktop");

std::filesystem::file_time_type changed(const QString& directory)
{
    std::error_code absent; // a missing directory has this time
    const auto time = std::filesystem::last_write_time(QFile::encodeName(directory).toStdString(), absent);
    return absent ? std::filesystem::file_time_type::min() : time;
}

bool isLike(QStringView id, QStringView name)
{
    return id.compare(name, Qt::CaseInsensitive) == 0;
}

QStringView lastPart(QStringView id)
{
    return id.sliced(id.lastIndexOf(u'.') + 1);
}

} // namespace

DesktopEntries::Surroundings DesktopEntries::Surroundings::ofThisProcess()
{
    Surroundings made;
    if (const auto data = XdgDirectories::ofThisProcess().data)
        made.directories.append(*data + QLatin1StringView("/applications"));
    const QString systemDirectories =
        qEnvironmentVariable("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"));
    for (const QString& directory : systemDirectories.split(u':', Qt::SkipEmptyParts)) {
        if (QDir::isAbsolutePath(directory))
            made.directories.append(QDir::cleanPath(directory) + QLatin1StringView("/applications"));
    }
    made.currentDesktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    const QString locale = QLocale().name();
    made.locales = {locale, locale.section(u'_', 0, 0)};
    made.searchPath = qEnvironmentVariable("PATH").split(u':', Qt::SkipEmptyParts);
    return made;
}

DesktopEntries::DesktopEntries(Surroundings surroundings) : m_surroundings(std::move(surroundings)) {}

std::optional<DesktopEntries::Entry> DesktopEntries::entry(const QString& id)
{
    readIfChanged();
    if (id.isEmpty())
        return std::nullopt;
    auto found = std::find_if(m_entries.cbegin(), m_entries.cend(),
                              [&](const Entry& entry) { return isLike(entry.id, id); });
    if (found == m_entries.cend()) {
        found = std::find_if(m_entries.cbegin(), m_entries.cend(),
                             [&](const Entry& entry) { return isLike(lastPart(entry.id), id); });
    }
    return found == m_entries.cend() ? std::nullopt : std::optional(*found);
}

std::optional<DesktopEntries::Entry> DesktopEntries::entryForWindow(const QString& windowClass,
                                                                    const QString& windowInstance)
{
    readIfChanged();
    const QStringList names = {windowClass, windowInstance};
    // Entries for menus go first: the others are often handlers of one kind of file that share the class.
    for (const bool forMenus : {true, false}) {
        for (const QString& name : names) {
            const auto found = std::find_if(m_entries.cbegin(), m_entries.cend(), [&](const Entry& entry) {
                return entry.isForMenus == forMenus && !name.isEmpty() && isLike(entry.startupWMClass, name);
            });
            if (found != m_entries.cend())
                return *found;
        }
    }
    for (const QString& name : names) {
        auto found = entry(name);
        if (!found && name.contains(u' '))
            found = entry(QString(name).replace(u' ', u'-'));
        if (found)
            return found;
    }
    return std::nullopt;
}

QList<DesktopEntries::Entry> DesktopEntries::entriesForMenus()
{
    readIfChanged();
    QList<Entry> list;
    std::copy_if(m_entries.cbegin(), m_entries.cend(), std::back_inserter(list),
                 [](const Entry& entry) { return entry.isForMenus; });
    QCollator order;
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(list.begin(), list.end(),
                     [&](const Entry& a, const Entry& b) { return order.compare(a.name, b.name) < 0; });
    return list;
}

void DesktopEntries::readIfChanged()
{
    const auto isAsItWas = [this](const QString& directory) {
        return m_times->value(directory) == changed(directory);
    };
    const QStringList known = m_times ? m_times->keys() : QStringList();
    if (!m_times || !std::all_of(known.begin(), known.end(), isAsItWas))
        read();
}

struct DesktopEntries::Seen {
    QSet<QString> ids;
    /// The real paths of the directories seen: a link may lead back up.
    QSet<QString> places;
};

void DesktopEntries::read()
{
    m_times.emplace();
    m_entries.clear();
    Seen seen;
    for (const QString& directory : m_surroundings.directories)
        readDirectory(directory, {}, seen);
}

/// An id that was seen before shadows this one, even if that entry was told to be hidden.
void DesktopEntries::readDirectory(const QString& directory, const QString& idPrefix, Seen& seen)
{
    // The time is taken before the directory is read: what changes meanwhile is read once more.
    m_times->insert(directory, changed(directory));
    const QDir files(directory);
    const QString place = files.canonicalPath();
    if (place.isEmpty() || seen.places.contains(place))
        return;
    seen.places.insert(place);
    for (const QString& name : files.entryList({u'*' + suffix}, QDir::Files, QDir::Name)) {
        const QString id = idPrefix + name.chopped(suffix.size());
        if (seen.ids.contains(id))
            continue;
        seen.ids.insert(id);
        readFile(files.filePath(name), id);
    }
    for (const QString& name : files.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        readDirectory(files.filePath(name), idPrefix + name + u'-', seen);
}

void DesktopEntries::readFile(const QString& path, const QString& id)
{
    constexpr qint64 largest = qint64{1024} * 1024;
    QFile file(path);
    if (file.size() > largest || !file.open(QIODevice::ReadOnly))
        return;
    const DesktopEntry entry = DesktopEntry::parse(file.readAll(), m_surroundings.locales);
    if (entry.string(QStringLiteral("Type")) != QStringLiteral("Application") ||
        entry.boolean(QStringLiteral("Hidden")).value_or(false))
        return;
    const QString name = localized(entry, QStringLiteral("Name"));
    m_entries.append({.id = id,
                      .name = name.isEmpty() ? id : name,
                      .iconName = localized(entry, QStringLiteral("Icon")),
                      .startupWMClass = entry.string(QStringLiteral("StartupWMClass")).value_or(QString()),
                      .isForMenus = isForMenus(entry),
                      .isPartOfDesktop = isPartOfDesktop(entry)});
}

bool DesktopEntries::isPartOfDesktop(const DesktopEntry& file)
{
    static const QStringList parts = {QStringLiteral("DesktopSettings"), QStringLiteral("Screensaver"),
                                      QStringLiteral("TrayIcon"), QStringLiteral("Applet"),
                                      QStringLiteral("Shell")};
    const QStringList categories = file.list(QStringLiteral("Categories"));
    return std::any_of(categories.begin(), categories.end(),
                       [](const QString& category) { return parts.contains(category); });
}

bool DesktopEntries::isForMenus(const DesktopEntry& file) const
{
    if (file.boolean(QStringLiteral("NoDisplay")).value_or(false) ||
        file.boolean(QStringLiteral("Terminal")).value_or(false))
        return false;
    const auto names = [&](const QString& key) {
        const QStringList desktops = file.list(key);
        return std::any_of(desktops.begin(), desktops.end(), [this](const QString& desktop) {
            return m_surroundings.currentDesktops.contains(desktop);
        });
    };
    if (names(QStringLiteral("NotShowIn")) ||
        (file.string(QStringLiteral("OnlyShowIn")) && !names(QStringLiteral("OnlyShowIn"))))
        return false;
    const QString program = file.string(QStringLiteral("TryExec")).value_or(QString());
    return program.isEmpty() || !QStandardPaths::findExecutable(program, m_surroundings.searchPath).isEmpty();
}

QString DesktopEntries::localized(const DesktopEntry& file, const QString& key) const
{
    for (const QString& locale : m_surroundings.locales) {
        if (const auto text = file.string(key + u'[' + locale + u']'))
            return *text;
    }
    return file.string(key).value_or(QString());
}

} // namespace orvane
