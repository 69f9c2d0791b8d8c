// The main group of a desktop entry file, as far as starting a program at login needs it.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvane {

class DesktopEntry {
public:
    /// Reads the group "Desktop Entry". Lines that aren't keys of it are ignored, and so are the translations
    /// into other locales than these: most of a file is translations, and most of the time would go into
    /// them.
    [[nodiscard]] static DesktopEntry parse(QByteArrayView text,
                                            const std::optional<QStringList>& locales = std::nullopt);

    /// Returns the value with the escapes of a text resolved.
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    /// Nothing where the key is absent or not a boolean.
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const;
    /// Returns the parts between semicolons.
    [[nodiscard]] QStringList list(const QString& key) const;

    /// Returns the first word of a command line, its quotes resolved; empty when the line is invalid.
    static QString programOf(const QString& commandLine);
    /// Returns a word for a command line, quoted where the launcher would give it a meaning.
    static QString quotedWord(const QString& word);
    /// Returns a text as it is written after the "=".
    static QString escaped(const QString& text);

private:
    QHash<QString, QString> m_values; // as they are written after the "="
};

} // namespace orvane
