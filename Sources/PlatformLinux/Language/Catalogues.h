// The wording of this desktop and its translations, which are built into the program. The source texts of the
// code are those of the system that the platform's interfaces are named after.
#pragma once

#include <QLocale>
#include <QStringList>
#include <QTranslator>

namespace orvane {

/// Installs the catalogue of the user's language for as long as it lives. Make it after the application
/// object and before the first text is read; main thread.
class Catalogues {
public:
    explicit Catalogues(const QLocale& user = QLocale::system());
    ~Catalogues();
    Catalogues(const Catalogues&) = delete;
    Catalogues& operator=(const Catalogues&) = delete;

private:
    QLocale m_previous;
    QTranslator m_texts;
    QTranslator m_textsOfQt;
};

/// Returns the first of the wanted languages that has a catalogue, where "de" serves "de-AT" too: the name of
/// its file. The English one where there is none.
[[nodiscard]] QString catalogueFor(const QStringList& wantedLanguages);

/// Returns the locale that numbers, times and dates are written in. It is the user's own, except where that
/// one has digits of another script than the texts, which would stand beside digits of the texts.
[[nodiscard]] QLocale localeForTexts(const QLocale& user, QLocale::Language ofTexts);

} // namespace orvane
