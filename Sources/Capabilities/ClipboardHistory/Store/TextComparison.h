// Comparing texts as a person would, whatever way their characters are composed. Pure.
#pragma once

#include <QLocale>
#include <QString>

namespace orvane::TextComparison {

/// Whether two strings are the same characters: "é" is "e" with an acute accent behind it.
bool canonicallyEquivalent(const QString& left, const QString& right);

/// Finds one text in many others, case aside. "I" is the capital of "ı" where the locale's language says so.
class Search {
public:
    /// `query` as it stands; an empty one is found in every text.
    Search(const QString& query, const QLocale& locale);
    bool isFoundIn(const QString& text) const;

private:
    QString folded(const QString& text) const;

    enum class DottedI { common, turkic };
    DottedI m_dottedI;
    QString m_query; // folded
    bool m_isASCII;
};

} // namespace orvane::TextComparison
