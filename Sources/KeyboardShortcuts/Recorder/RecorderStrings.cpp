#include "KeyboardShortcuts/Recorder/RecorderStrings.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

// The tables are in a static library: this reference keeps the linker from leaving them out.
static void initStrings()
{
    Q_INIT_RESOURCE(strings);
}

namespace orvane::KeyboardShortcuts {

ResourceBundle::ResourceBundle(const QStringList& languages)
{
    initStrings();
    add(QStringLiteral("en"));
    for (const QString& language : languages) {
        if (add(language) || add(language.section(u'-', 0, 0)))
            return;
    }
}

bool ResourceBundle::add(const QString& language)
{
    QFile file(QStringLiteral(":/strings/KeyboardShortcuts/%1.json").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QJsonObject table = QJsonDocument::fromJson(file.readAll()).object();
    for (auto entry = table.begin(); entry != table.end(); ++entry)
        m_texts.insert(entry.key(), entry.value().toString());
    return true;
}

const ResourceBundle& orvaneResourceBundle()
{
    static const ResourceBundle bundle(QLocale().uiLanguages());
    return bundle;
}

} // namespace orvane::KeyboardShortcuts
