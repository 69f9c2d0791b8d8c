// The main group of a desktop entry file, as far as starting a program at login asks for it.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvane {

class DesktopEntry {
public:
    /// Reads the group "Desktop Entry". Lines that are none of its keys are passed over.
    static DesktopEntry parse(const QByteArray& text);

    /// The value with the escapes of a text resolved.
    std::optional<QString> string(const QString& key) const;
    /// Nothing where the key is absent or no boolean.
    std::optional<bool> boolean(const QString& key) const;
    /// The parts between semicolons.
    QStringList list(const QString& key) const;

    /// The first word of a command line, its quotes resolved; empty when the line is invalid.
    static QString programOf(const QString& commandLine);
    /// A word for a command line: quoted as needed, without meaning for the launcher.
    static QString quotedWord(const QString& word);
    /// A text as it stands after the "=".
    static QString escaped(const QString& text);

private:
    QHash<QString, QString> m_values; // raw, as after the "="
};

} // namespace orvane
