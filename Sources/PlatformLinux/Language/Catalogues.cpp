#include "PlatformLinux/Language/Catalogues.h"

#include <QCoreApplication>
#include <QLibraryInfo>

#include <array>

// The catalogues are in a static library: this reference keeps the linker from leaving them out.
static void initTranslations()
{
    Q_INIT_RESOURCE(translations);
}

namespace orvane {

namespace {

struct Catalogue {
    QLatin1StringView language;
    QLatin1StringView file;
};

constexpr std::array catalogues{
    Catalogue{QLatin1StringView("en"), QLatin1StringView("orvane_en_linux")},
    Catalogue{QLatin1StringView("de"), QLatin1StringView("orvane_de")},
};

} // namespace

Catalogues::Catalogues(const QLocale& user)
{
    initTranslations();
    const QString file = catalogueFor(user.uiLanguages());
    if (m_texts.load(file, QStringLiteral(":/translations")))
        QCoreApplication::installTranslator(&m_texts);
    const QLocale ofTexts(m_texts.language());
    // Qt's own texts are English in the code.
    if (ofTexts.language() != QLocale::English &&
        m_textsOfQt.load(ofTexts, QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_textsOfQt);
    QLocale::setDefault(localeForTexts(user, ofTexts.language()));
}

Catalogues::~Catalogues()
{
    QLocale::setDefault(m_previous);
}

QString catalogueFor(const QStringList& wantedLanguages)
{
    for (const QString& wanted : wantedLanguages) {
        const QString language = wanted.section(u'-', 0, 0);
        for (const Catalogue& catalogue : catalogues) {
            if (language == catalogue.language)
                return catalogue.file;
        }
    }
    return catalogues.front().file;
}

QLocale localeForTexts(const QLocale& user, QLocale::Language ofTexts)
{
    constexpr QChar digitOfTexts = u'0';
    return user.zeroDigit() == digitOfTexts ? user : QLocale(ofTexts, user.territory());
}

} // namespace orvane
