// The desktop entries of the installed programs: by the class of a window, and as a list to choose from. They
// are read at the first question, and again when one of their directories has changed since; otherwise a
// question costs a look at each directory's time. Main thread.
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <filesystem>
#include <optional>

namespace orvane {

class DesktopEntry;

class DesktopEntries {
public:
    struct Entry {
        /// The id without ".desktop".
        QString id;
        QString name;
        /// A name in the theme, or an absolute path.
        QString iconName;
        /// The class that its windows are said to have; mostly empty.
        QString startupWMClass;
        /// True for a program that is meant for this desktop's menus and has a window of its own.
        bool isForMenus = false;
        /// True for a part of the desktop itself by its categories: its settings, an applet, the screen
        /// saver.
        bool isPartOfDesktop = false;
    };

    /// What decides about the entries besides the files.
    struct Surroundings {
        /// Directories named "applications", the most important first.
        QStringList directories;
        QStringList currentDesktops;
        /// "de_DE", "de": the suffixes of localized keys, the best first.
        QStringList locales;
        /// The directories in which the programs of TryExec are looked for.
        QStringList searchPath;

        static Surroundings ofThisProcess();
    };

    explicit DesktopEntries(Surroundings surroundings = Surroundings::ofThisProcess());

    /// Finds an entry by its id, or by the last part of an id in reverse notation; case is ignored.
    std::optional<Entry> entry(const QString& id);
    /// Finds the entry that names the class, or whose id is like the class or, after that, like the instance.
    std::optional<Entry> entryForWindow(const QString& windowClass, const QString& windowInstance);
    /// Returns the entries for menus, by name.
    QList<Entry> entriesForMenus();

private:
    void readIfChanged();
    void read();
    struct Seen;
    void readDirectory(const QString& directory, const QString& idPrefix, Seen& seen);
    void readFile(const QString& path, const QString& id);
    [[nodiscard]] bool isForMenus(const DesktopEntry& file) const;
    static bool isPartOfDesktop(const DesktopEntry& file);
    [[nodiscard]] QString localized(const DesktopEntry& file, const QString& key) const;

    Surroundings m_surroundings;
    QList<Entry> m_entries;
    /// The times of all directories that were looked at, nested ones included.
    std::optional<QHash<QString, std::filesystem::file_time_type>> m_times;
};

} // namespace orvane
