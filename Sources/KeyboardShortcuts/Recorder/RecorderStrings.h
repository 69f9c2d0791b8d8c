// The texts of the recorder, by key, in the user's language, from the tables that are built into the program.
// Main thread.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace orvane::KeyboardShortcuts {

/// One table of texts.
class ResourceBundle {
public:
    /// Takes the first of the languages that has a table, where "de" serves "de-AT" too; English when there
    /// is none. A text that this table lacks comes from the English one.
    explicit ResourceBundle(const QStringList& languages);

    /// Returns the key itself when no table has it.
    [[nodiscard]] QString localizedString(const QString& key) const { return m_texts.value(key, key); }

private:
    bool add(const QString& language);

    QHash<QString, QString> m_texts;
};

/// The strings are in the language that the desktop had at the first call.
const ResourceBundle& orvaneResourceBundle();

} // namespace orvane::KeyboardShortcuts
