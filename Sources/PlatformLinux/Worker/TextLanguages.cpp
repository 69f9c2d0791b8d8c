#include "PlatformLinux/Worker/TextLanguages.h"

#include "Platform/Protocols/WorkerProtocol.h"

#include <QFileInfo>
#include <QLocale>

#include <array>
#include <string_view>

namespace orvane {

namespace {

struct Language {
    /// As in the names of the models.
    const char16_t* code;
    /// As in the names of locales.
    const char16_t* locale;
    /// The keyboard layouts that are for this language alone or first of all, separated by blanks.
    const char16_t* layouts;
};

/// A layout that is no language's, such as "us", stands beside English, which is always there.
constexpr std::array languages{
    Language{u"eng", u"en", u"us gb ca au nz"},
    Language{u"ara", u"ar", u"ara eg iq ma sy"},
    Language{u"bul", u"bg", u"bg"},
    Language{u"cat", u"ca", u""},
    Language{u"ces", u"cs", u"cz"},
    Language{u"chi_sim", u"zh", u"cn"},
    Language{u"chi_tra", u"zh_TW", u"tw"},
    Language{u"dan", u"da", u"dk"},
    Language{u"deu", u"de", u"de at"},
    Language{u"ell", u"el", u"gr"},
    Language{u"est", u"et", u"ee"},
    Language{u"fin", u"fi", u"fi"},
    Language{u"fra", u"fr", u"fr be"},
    Language{u"heb", u"he", u"il"},
    Language{u"hin", u"hi", u"in"},
    Language{u"hrv", u"hr", u"hr"},
    Language{u"hun", u"hu", u"hu"},
    Language{u"ind", u"id", u"id"},
    Language{u"isl", u"is", u"is"},
    Language{u"ita", u"it", u"it"},
    Language{u"jpn", u"ja", u"jp"},
    Language{u"kor", u"ko", u"kr"},
    Language{u"lav", u"lv", u"lv"},
    Language{u"lit", u"lt", u"lt"},
    Language{u"nld", u"nl", u"nl"},
    Language{u"nor", u"nb", u"no"},
    Language{u"pol", u"pl", u"pl"},
    Language{u"por", u"pt", u"pt br"},
    Language{u"ron", u"ro", u"ro"},
    Language{u"rus", u"ru", u"ru"},
    Language{u"slk", u"sk", u"sk"},
    Language{u"slv", u"sl", u"si"},
    Language{u"spa", u"es", u"es latam"},
    Language{u"srp", u"sr", u"rs"},
    Language{u"swe", u"sv", u"se"},
    Language{u"tha", u"th", u"th"},
    Language{u"tur", u"tr", u"tr"},
    Language{u"ukr", u"uk", u"ua"},
    Language{u"vie", u"vi", u"vn"},
};

QString text(const char16_t* characters)
{
    return QStringView(characters).toString();
}

/// Returns the code of a locale's language, or nothing for one without a model.
QString codeOfLocale(QString locale)
{
    locale.replace(u'-', u'_');
    const bool isTraditional =
        locale.startsWith(QStringLiteral("zh")) &&
        (locale.contains(QStringLiteral("TW")) || locale.contains(QStringLiteral("HK")) ||
         locale.contains(QStringLiteral("Hant")));
    const QString language = isTraditional ? QStringLiteral("zh_TW") : locale.section(u'_', 0, 0);
    for (const Language& each : languages) {
        if (language == text(each.locale))
            return text(each.code);
    }
    return {};
}

QString codeOfLayout(const QString& layout)
{
    for (const Language& each : languages) {
        if (text(each.layouts).split(u' ').contains(layout))
            return text(each.code);
    }
    return {};
}

constexpr QStringView english = u"eng";

QString nameOf(const QString& code)
{
    for (const Language& each : languages) {
        if (code == text(each.code))
            return QLocale(text(each.locale)).nativeLanguageName();
    }
    return code;
}

} // namespace

QStringList TextLanguages::ofUser(const QStringList& locales, const QStringList& layouts)
{
    QStringList codes;
    for (const QString& locale : locales)
        codes.append(codeOfLocale(locale));
    for (const QString& layout : layouts)
        codes.append(codeOfLayout(layout));
    codes.append(english.toString());
    codes.removeAll(QString());
    codes.removeDuplicates();
    return codes;
}

QStringList TextLanguages::layoutsIn(const QByteArray& rules)
{
    // The rules, the model, the layouts, the variants and the options, each with a zero behind it.
    const QList<QByteArray> parts = rules.split('\0');
    constexpr qsizetype place = 2;
    if (parts.size() <= place)
        return {};
    return QString::fromLatin1(parts.at(place)).split(u',', Qt::SkipEmptyParts);
}

TextLanguages::TextLanguages(const QStringList& languages, const QStringList& folders)
{
    for (const QString& language : languages) {
        QString path;
        for (const QString& folder : folders) {
            const QString file = folder + u'/' + language + QStringLiteral(".traineddata");
            if (path.isEmpty() && QFileInfo(file).isFile())
                path = file;
        }
        if (path.isEmpty())
            m_missing.append(language);
        else
            m_models.append({language, path});
    }
    constexpr auto most = static_cast<qsizetype>(WorkerProtocol::mostLanguages);
    if (m_models.size() <= most)
        return;
    // English, which programs are full of, comes last and stays.
    if (m_models.last().language == english)
        m_models.swapItemsAt(most - 1, m_models.size() - 1);
    m_models.resize(most);
}

TextRecognition::Languages TextLanguages::described() const
{
    TextRecognition::Languages described;
    for (const Model& model : m_models)
        described.inUse.append(nameOf(model.language));
    for (const QString& code : m_missing) {
        const QString suffix = QString(code).replace(u'_', u'-');
        described.missing.append({nameOf(code), QStringLiteral("tesseract-ocr-") + suffix});
    }
    return described;
}

} // namespace orvane
