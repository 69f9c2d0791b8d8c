// The languages in which text is read: which the user has, and which of them have a model on this system.
#pragma once

#include "Platform/TextRecognition.h"

#include <QByteArray>

namespace orvane {

class TextLanguages {
public:
    /// Returns the codes of the languages, ISO 639-3 where there are no variants, without repetitions: those
    /// of the locales (such as "de-AT" or "pt_BR"), those of the keyboard layouts (such as "de" or "us"), and
    /// English.
    [[nodiscard]] static QStringList ofUser(const QStringList& locales, const QStringList& layouts);

    /// Returns the layouts in the value of the X server's property of keyboard rules.
    [[nodiscard]] static QStringList layoutsIn(const QByteArray& rules);

    /// Looks for the models in the folders, of which the first that has one wins.
    TextLanguages(const QStringList& languages, const QStringList& folders);

    struct Model {
        QString language;
        QString path;
        friend bool operator==(const Model&, const Model&) = default;
    };
    /// Returns the models of the first languages that have one, as many as are used at once.
    [[nodiscard]] const QList<Model>& models() const { return m_models; }
    /// Returns the names of all this.
    [[nodiscard]] TextRecognition::Languages described() const;

private:
    QList<Model> m_models;
    QStringList m_missing;
};

} // namespace orvane
