#include "Capabilities/ClipboardHistory/Store/TextComparison.h"

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

/// Goes by blocks, which the compiler turns into wide operations: a text may have many megabytes.
bool isASCII(QStringView text)
{
    constexpr qsizetype blockSize = 1024;
    const char16_t* unit = text.utf16();
    const char16_t* const end = unit + text.size();
    for (; end - unit >= blockSize; unit += blockSize) {
        char16_t bits = 0;
        for (qsizetype i = 0; i < blockSize; ++i)
            bits = static_cast<char16_t>(bits | unit[i]);
        if (bits >= 0x80)
            return false;
    }
    return std::all_of(unit, end, [](char16_t each) { return each < 0x80; });
}

/// Finds `folded` in an ASCII text, ignoring case. The toolkit's search for one character, which compares
/// many at once, finds the places where it may begin.
bool containsASCII(QStringView text, QStringView folded)
{
    if (folded.isEmpty())
        return true;
    const QChar lower = folded.front();
    const QChar upper = lower.toUpper();
    qsizetype nextLower = text.indexOf(lower);
    qsizetype nextUpper = upper == lower ? -1 : text.indexOf(upper);
    while (nextLower >= 0 || nextUpper >= 0) {
        const bool isLower = nextUpper < 0 || (nextLower >= 0 && nextLower < nextUpper);
        qsizetype& next = isLower ? nextLower : nextUpper;
        if (text.sliced(next).startsWith(folded, Qt::CaseInsensitive))
            return true;
        next = text.indexOf(isLower ? lower : upper, next + 1);
    }
    return false;
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
    // Most pairs end here, which matters when one text is compared with thousands.
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
      m_query(folded(query)),
      m_isASCII(isASCII(m_query))
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
    if (m_dottedI == DottedI::common && isASCII(text))
        return m_isASCII && containsASCII(text, m_query);
    return folded(text).contains(m_query);
}

} // namespace orvane::TextComparison
