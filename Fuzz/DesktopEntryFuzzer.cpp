// Any file is a desktop entry, perhaps an empty one. Leaving out other locales changes nothing else, and
// every text and word that is written comes back from what was written.
#include "PlatformLinux/Files/DesktopEntry.h"
#include "Require.h"

#include <cstdint>

using namespace orvane;
using orvane::fuzz::require;

namespace {

void checkLocales(const QByteArray& file)
{
    const QStringList locales{QStringLiteral("de_AT"), QStringLiteral("de")};
    const DesktopEntry whole = DesktopEntry::parse(file);
    const DesktopEntry kept = DesktopEntry::parse(file, locales);
    for (const char* name :
         {"Type", "Name", "Name[de]", "Name[de_AT]", "Icon", "Exec", "TryExec", "Hidden", "Categories"}) {
        const auto key = QString::fromLatin1(name);
        require(whole.string(key) == kept.string(key));
        require(whole.boolean(key) == kept.boolean(key));
        require(whole.list(key) == kept.list(key));
    }
}

void checkWriting(const QString& text)
{
    require(DesktopEntry::programOf(DesktopEntry::quotedWord(text)) == text);
    // Values are trimmed, so a text that ends with a space has no form that keeps it.
    const QString trimmed = text.trimmed();
    const QString entry = QStringLiteral("[Desktop Entry]\nName=") + DesktopEntry::escaped(trimmed);
    require(DesktopEntry::parse(entry.toUtf8()).string(QStringLiteral("Name")) == trimmed);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkLocales(bytes);
    const QString text = QString::fromUtf8(bytes);
    require(DesktopEntry::programOf(text).size() <= text.size());
    // Half a character, or none, isn't written.
    if (text.toUtf8() == bytes && !text.contains(QChar::Null))
        checkWriting(text);
    return 0;
}
