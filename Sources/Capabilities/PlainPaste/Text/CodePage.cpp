#include "Capabilities/PlainPaste/Text/CodePage.h"

#include <QByteArray>

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <limits>

namespace orvane {

namespace {

struct Numbered {
    int number;
    const char* name;
};

constexpr std::array numberedPages{
    Numbered{437, "ibm-437"},       Numbered{708, "iso-8859-6"},      Numbered{737, "ibm-737"},
    Numbered{775, "ibm-775"},       Numbered{850, "ibm-850"},         Numbered{852, "ibm-852"},
    Numbered{855, "ibm-855"},       Numbered{857, "ibm-857"},         Numbered{860, "ibm-860"},
    Numbered{861, "ibm-861"},       Numbered{862, "ibm-862"},         Numbered{863, "ibm-863"},
    Numbered{864, "ibm-864"},       Numbered{865, "ibm-865"},         Numbered{866, "ibm-866"},
    Numbered{869, "ibm-869"},       Numbered{874, "windows-874"},     Numbered{932, "windows-31j"},
    Numbered{936, "GBK"},           Numbered{949, "windows-949"},     Numbered{950, "windows-950"},
    Numbered{1250, "windows-1250"}, Numbered{1251, "windows-1251"},   Numbered{1252, "windows-1252"},
    Numbered{1253, "windows-1253"}, Numbered{1254, "windows-1254"},   Numbered{1255, "windows-1255"},
    Numbered{1256, "windows-1256"}, Numbered{1257, "windows-1257"},   Numbered{1258, "windows-1258"},
    Numbered{10000, "macintosh"},   Numbered{10006, "x-mac-greek"},   Numbered{10007, "x-mac-cyrillic"},
    Numbered{10029, "x-mac-ce"},    Numbered{10081, "x-mac-turkish"}, Numbered{54936, "gb18030"},
    Numbered{65001, "UTF-8"},
};

struct Label {
    const char* label;
    const char* name;
};

/// Labels that browsers read as another encoding than the name says, since pages use them so.
constexpr std::array widenedLabels{
    Label{"ascii", "windows-1252"},
    Label{"us-ascii", "windows-1252"},
    Label{"iso-8859-1", "windows-1252"},
    Label{"latin1", "windows-1252"},
    Label{"iso-8859-9", "windows-1254"},
    Label{"gb2312", "GBK"},
    Label{"shift_jis", "windows-31j"},
    Label{"shift-jis", "windows-31j"},
    Label{"ks_c_5601-1987", "windows-949"},
    Label{"euc-kr", "windows-949"},
    Label{"tis-620", "windows-874"},
    // A page whose label could be read this way isn't in an encoding of wider units.
    Label{"utf-16", "UTF-8"},
    Label{"utf-16le", "UTF-8"},
    Label{"utf-16be", "UTF-8"},
    Label{"utf-32", "UTF-8"},
    Label{"unicode", "UTF-8"},
};

/// A converter's name is also looked up as a file, and may carry options.
bool isPlainName(QByteArrayView label)
{
    return !label.isEmpty() && label.size() <= 40 && std::ranges::all_of(label, [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9') ||
               character == '-' || character == '_' || character == ':';
    });
}

} // namespace

void CodePage::Closer::operator()(UConverter* converter) const
{
    ucnv_close(converter);
}

CodePage::Handle CodePage::open(const char* name)
{
    UErrorCode status = U_ZERO_ERROR;
    Handle converter(ucnv_open(name, &status));
    return U_SUCCESS(status) ? std::move(converter) : Handle();
}

CodePage CodePage::numbered(int number)
{
    const auto found = std::ranges::find(numberedPages, number, &Numbered::number);
    if (found != numberedPages.end()) {
        if (Handle converter = open(found->name))
            return CodePage(std::move(converter));
    }
    return CodePage(open("windows-1252"));
}

std::optional<CodePage> CodePage::labelled(QByteArrayView label)
{
    const QByteArray name = label.trimmed().toByteArray().toLower();
    if (!isPlainName(name))
        return std::nullopt;
    const auto widened = std::ranges::find_if(
        widenedLabels, [&](const Label& entry) { return name == QByteArrayView(entry.label); });
    if (widened != widenedLabels.end())
        return CodePage(open(widened->name));
    UErrorCode status = U_ZERO_ERROR;
    if (ucnv_countAliases(name.constData(), &status) == 0 || U_FAILURE(status))
        return std::nullopt;
    Handle converter = open(name.constData());
    // The label was read as ASCII, so the document can't be in an encoding of wider units.
    if (!converter || ucnv_getMinCharSize(converter.get()) != 1)
        return std::nullopt;
    return CodePage(std::move(converter));
}

QString CodePage::decode(QByteArrayView bytes) const
{
    constexpr auto longest = static_cast<qsizetype>(std::numeric_limits<int32_t>::max());
    if (!m_converter || bytes.isEmpty() || bytes.size() > longest)
        return {};
    const auto size = static_cast<int32_t>(bytes.size());
    QString text(bytes.size(), Qt::Uninitialized);
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length = ucnv_toUChars(m_converter.get(), reinterpret_cast<UChar*>(text.data()),
                                             static_cast<int32_t>(text.size()), bytes.data(), size, &status);
        if (status != U_BUFFER_OVERFLOW_ERROR) {
            text.truncate(U_SUCCESS(status) ? length : 0);
            return text;
        }
        text.resize(length);
    }
}

} // namespace orvane
