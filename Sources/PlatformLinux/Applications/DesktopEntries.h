// The desktop entries of the programs that are installed: by the class of a window, and as a list to choose
// from. They are read at the first question and again when a directory of theirs has changed since; a
// question otherwise costs a look at each directory's time. Main thread.
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
        /// Without ".desktop".
        QString id;
        QString name;
        /// A name in the theme, or an absolute path.
        QString iconName;
        /// The class that its windows are told to have; mostly empty.
        QString startupWMClass;
        /// Meant for this desktop's menus, and with a window of its own.
        bool isForMenus = false;
        /// A piece of the desktop itself by its categories: its settings, an applet, the screen saver.
        bool isPartOfDesktop = false;
    };

    /// What the rules of the entries depend on, besides the files.
    struct Surroundings {
        /// Directories named "applications", the most important first.
        QStringList directories;
        QStringList currentDesktops;
        /// "de_DE", "de": the suffixes of localized keys, the best first.
        QStringList locales;
        /// Where the programs named in TryExec are looked for.
        QStringList searchPath;

        static Surroundings ofThisProcess();
    };

    explicit DesktopEntries(Surroundings surroundings = Surroundings::ofThisProcess());

    /// By an id, or the last part of one that is a name in reverse notation; case is ignored.
    std::optional<Entry> entry(const QString& id);
    /// The entry that says so of its windows, or whose id is like the class or, after that, the instance.
    std::optional<Entry> entryForWindow(const QString& windowClass, const QString& windowInstance);
    /// Those for menus, by name.
    QList<Entry> entriesForMenus();

private:
    void readIfChanged();
    void read();
    struct Seen;
    void readDirectory(const QString& directory, const QString& idPrefix, Seen& seen);
    void readFile(const QString& path, const QString& id);
    bool isForMenus(const DesktopEntry& file) const;
    static bool isPartOfDesktop(const DesktopEntry& file);
    QString localized(const DesktopEntry& file, const QString& key) const;

    Surroundings m_surroundings;
    QList<Entry> m_entries;
    /// Of each directory that was looked at, nested ones too.
    std::optional<QHash<QString, std::filesystem::file_time_type>> m_times;
};

} // namespace orvane
