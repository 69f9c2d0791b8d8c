// Whatever another program sends, links and files are returned in the form in which they would be read again,
// and texts in UTF-8.
#include "PlatformLinux/Pasteboard/PasteboardFormats.h"
#include "PlatformLinux/Pasteboard/PasteboardTargets.h"
#include "Require.h"

#include <QStringDecoder>

#include <cstdint>

using namespace orvane;
using orvane::fuzz::require;

namespace {

bool isUtf8(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8);
    const QString text = decoder(bytes);
    return !decoder.hasError();
}

void checkUrls(const QList<QUrl>& urls)
{
    for (const QUrl& url : urls)
        require(url.isValid() && !url.scheme().isEmpty());
    require(decodeUriList(encodeUriList(urls)).size() == urls.size());
    require(decodeCopiedFiles(encodeCopiedFiles(urls)).size() == urls.size());
}

/// Reads all bytes as the answer to one target.
void checkAnswer(const TargetName& target, const QByteArray& bytes)
{
    const QStringList wanted{pasteboardType::string, pasteboardType::url, pasteboardType::fileURL,
                             pasteboardType::html};
    for (const ReadStep& step : readSteps({target}, wanted)) {
        SelectionContents read;
        takeAnswer(read, wanted, step, target, bytes);
        const PasteboardContents& contents = read.contents;
        for (const QByteArray& data : contents.data)
            require(isUtf8(data));
        for (auto data = contents.data.cbegin(); data != contents.data.cend(); ++data)
            require(contents.types.contains(data.key()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkUrls(decodeUriList(bytes));
    checkUrls(decodeCopiedFiles(bytes));
    if (const auto url = decodeMozUrl(bytes))
        require(!url->isEmpty() && !url->contains(u'\n'));
    for (const char* target : {"UTF8_STRING", "STRING", "text/plain", "text/html", "text/x-moz-url",
                               "text/uri-list", "x-special/gnome-copied-files", "x-kde-passwordManagerHint"})
        checkAnswer(target, bytes);
    const QList<TargetName> targets = bytes.split('\n');
    require(typesOfTargets(targets).size() <= targets.size());
    (void)readSteps(targets, {pasteboardType::string, QString::fromUtf8(bytes)});
    return 0;
}
