// Compares texts as a person would, however their characters are composed. Pure.
#pragma once

#include <QLocale>
#include <QString>

namespace orvane::TextComparison {

/// True if two strings are the same characters: "é" is "e" followed by an acute accent.
bool canonicallyEquivalent(const QString& left, const QString& right);

/// Finds one text in many others, ignoring case. "I" is the capital of "ı" where the locale's language says
/// so.
class Search {
public:
    /// `query` isn't trimmed; an empty one is found in every text.
    Search(const QString& query, const QLocale& locale);
    [[nodiscard]] bool isFoundIn(const QString& text) const;

private:
    [[nodiscard]] QString folded(const QString& text) const;

    enum class DottedI { common, turkic };
    DottedI m_dottedI;
    QString m_query; // case-folded
    bool m_isASCII;
};

} // namespace orvane::TextComparison
