// Texts that are the same characters are found alike, however their characters are composed.
#include "Capabilities/ClipboardHistory/Store/TextComparison.h"
#include "Require.h"
#include "Script.h"

#include <unicode/unorm2.h>

using namespace orvane;
using orvane::fuzz::require;

namespace {

/// All strings of the toolkit can come, so half a pair of surrogates can, too.
QString text(const QByteArray& bytes, bool isUtf16)
{
    if (!isUtf16)
        return QString::fromUtf8(bytes);
    QString units(bytes.size() / 2, Qt::Uninitialized);
    std::memcpy(units.data(), bytes.constData(), static_cast<std::size_t>(units.size()) * 2);
    return units;
}

QString decomposed(const QString& text)
{
    if (text.isEmpty()) // the library takes equal addresses for a mistake
        return text;
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* const normalizer = unorm2_getNFDInstance(&status);
    constexpr qsizetype longest = 18; // what one unit becomes
    QString result(text.size() * longest, Qt::Uninitialized);
    const int32_t size = unorm2_normalize(
        normalizer, reinterpret_cast<const UChar*>(text.utf16()), static_cast<int32_t>(text.size()),
        reinterpret_cast<UChar*>(result.data()), static_cast<int32_t>(result.size()), &status);
    require(U_SUCCESS(status));
    result.truncate(size);
    return result;
}

void checkEquivalence(const QString& left, const QString& right)
{
    using TextComparison::canonicallyEquivalent;
    require(canonicallyEquivalent(left, left));
    require(canonicallyEquivalent(left, right) == canonicallyEquivalent(right, left));
    require(canonicallyEquivalent(left, decomposed(left)));
    require(canonicallyEquivalent(left, right) == (decomposed(left) == decomposed(right)));
}

void checkSearch(const QString& query, const QString& text, const QLocale& locale)
{
    const TextComparison::Search search(query, locale);
    require(search.isFoundIn(query));
    require(TextComparison::Search(QString(), locale).isFoundIn(text));
    const bool isFound = search.isFoundIn(text);
    require(search.isFoundIn(decomposed(text)) == isFound);
    require(TextComparison::Search(decomposed(query), locale).isFoundIn(text) == isFound);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Script script(data, size);
    const auto form = script.number<std::uint8_t>();
    const bool isUtf16 = form & 1;
    const QLocale locale(form & 2 ? QLocale::Turkish : QLocale::English);
    const QString left = text(script.bytes(script.number<std::uint8_t>()), isUtf16);
    const QString right = text(script.rest(), isUtf16);
    checkEquivalence(left, right);
    checkSearch(left, right, locale);
    return 0;
}
