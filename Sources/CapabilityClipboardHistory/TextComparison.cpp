#include "CapabilityClipboardHistory/TextComparison.h"

#include <unicode/unorm.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <algorithm>

namespace orvane::TextComparison {

namespace {

/// Below it no character combines with another one or decomposes.
constexpr char16_t firstComposedCharacter = 0xC0;

const UChar* units(const QString& text)
{
    return reinterpret_cast<const UChar*>(text.utf16());
}

int32_t length(const QString& text)
{
    return static_cast<int32_t>(text.size());
}

bool isASCII(const QString& text)
{
    return std::ranges::all_of(text, [](QChar character) { return character.unicode() < 0x80; });
}

/// Runs one of the operations that fill a buffer, with as much room as it asks for. Nothing on an error.
template <typename Operation>
QString filled(qsizetype expected, Operation operation)
{
    QString result(expected, Qt::Uninitialized);
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const int32_t needed = operation(reinterpret_cast<UChar*>(result.data()), length(result), &status);
        if (status != U_BUFFER_OVERFLOW_ERROR) {
            result.truncate(U_SUCCESS(status) ? needed : 0);
            return result;
        }
        result.resize(needed);
    }
}

QString composed(const QString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* const normalizer = unorm2_getNFCInstance(&status);
    if (U_FAILURE(status))
        return text;
    return filled(text.size(), [&](UChar* out, int32_t room, UErrorCode* error) {
        return unorm2_normalize(normalizer, units(text), length(text), out, room, error);
    });
}

} // namespace

bool canonicallyEquivalent(const QString& left, const QString& right)
{
    const auto [inLeft, inRight] = std::ranges::mismatch(left, right);
    if (inLeft == left.end() || inRight == right.end())
        return inLeft == left.end() && inRight == right.end();
    // Most pairs end here, which matters where one text is held against thousands.
    if (inLeft->unicode() < firstComposedCharacter && inRight->unicode() < firstComposedCharacter)
        return false;
    UErrorCode status = U_ZERO_ERROR;
    const int32_t order = unorm_compare(units(left), length(left), units(right), length(right), 0, &status);
    return U_SUCCESS(status) && order == 0;
}

Search::Search(const QString& query, const QLocale& locale)
    : m_dottedI(locale.language() == QLocale::Turkish || locale.language() == QLocale::Azerbaijani
                    ? DottedI::turkic
                    : DottedI::common),
      m_isASCII(isASCII(query)),
      m_query(folded(query))
{
}

QString Search::folded(const QString& text) const
{
    const uint32_t options =
        m_dottedI == DottedI::turkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
    const QString whole = composed(text);
    return composed(filled(whole.size(), [&](UChar* out, int32_t room, UErrorCode* error) {
        return u_strFoldCase(out, room, units(whole), length(whole), options, error);
    }));
}

bool Search::isFoundIn(const QString& text) const
{
    if (m_isASCII && m_dottedI == DottedI::common && isASCII(text))
        return text.contains(m_query, Qt::CaseInsensitive);
    return folded(text).contains(m_query);
}

} // namespace orvane::TextComparison
