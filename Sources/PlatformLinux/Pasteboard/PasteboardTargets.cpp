#include "PlatformLinux/Pasteboard/PasteboardTargets.h"

#include "PlatformLinux/Pasteboard/PasteboardFormats.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace orvane {

namespace {

enum class Encoding {
    utf8,
    latin1,
    unsure, // UTF-8, UTF-16 or Latin-1
    mozUrl,
    png,
    bmp,  // to be converted
    jpeg, // to be converted
    raw,
};

struct Flavour {
    QLatin1StringView type;
    const char* target;
    Encoding encoding;
};

/// The best one of a type comes first.
constexpr std::array readFlavours{
    Flavour{pasteboardType::string, "UTF8_STRING", Encoding::utf8},
    Flavour{pasteboardType::string, "text/plain;charset=utf-8", Encoding::utf8},
    Flavour{pasteboardType::string, "text/plain;charset=UTF-8", Encoding::utf8},
    Flavour{pasteboardType::string, "text/plain", Encoding::unsure},
    Flavour{pasteboardType::string, "STRING", Encoding::latin1},
    Flavour{pasteboardType::url, "text/x-moz-url", Encoding::mozUrl},
    Flavour{pasteboardType::html, "text/html", Encoding::unsure},
    Flavour{pasteboardType::rtf, "text/rtf", Encoding::raw},
    Flavour{pasteboardType::rtf, "application/rtf", Encoding::raw},
    Flavour{pasteboardType::rtf, "text/richtext", Encoding::raw},
    Flavour{pasteboardType::png, "image/png", Encoding::png},
    Flavour{pasteboardType::png, "image/bmp", Encoding::bmp},
    Flavour{pasteboardType::png, "image/x-bmp", Encoding::bmp},
    Flavour{pasteboardType::png, "image/x-MS-bmp", Encoding::bmp},
    Flavour{pasteboardType::png, "image/jpeg", Encoding::jpeg},
    Flavour{pasteboardType::tiff, "image/tiff", Encoding::raw},
};

struct Offer {
    QLatin1StringView type;
    const char* target;
};

constexpr std::array offeredFlavours{
    Offer{pasteboardType::string, "UTF8_STRING"},
    Offer{pasteboardType::string, "text/plain;charset=utf-8"},
    Offer{pasteboardType::string, "text/plain"},
    Offer{pasteboardType::string, "TEXT"},
    Offer{pasteboardType::string, "STRING"},
    Offer{pasteboardType::url, "text/x-moz-url"},
    Offer{pasteboardType::fileURL, "text/uri-list"},
    Offer{pasteboardType::fileURL, "x-special/gnome-copied-files"},
    Offer{pasteboardType::fileURL, "x-special/mate-copied-files"},
    Offer{pasteboardType::html, "text/html"},
    Offer{pasteboardType::rtf, "text/rtf"},
    Offer{pasteboardType::rtf, "application/rtf"},
    Offer{pasteboardType::rtf, "text/richtext"},
    Offer{pasteboardType::png, "image/png"},
    Offer{pasteboardType::tiff, "image/tiff"},
};

constexpr const char* uriList = "text/uri-list";
constexpr std::array fileTargets{uriList, "x-special/gnome-copied-files", "x-special/mate-copied-files"};
constexpr const char* secretHint = "x-kde-passwordManagerHint";
constexpr QLatin1StringView concealedType("org.nspasteboard.ConcealedType");

/// Targets of the protocol, which are no content.
constexpr std::array protocolTargets{"TARGETS",         "MULTIPLE",      "TIMESTAMP",
                                     "SAVE_TARGETS",    "DELETE",        "INSERT_SELECTION",
                                     "INSERT_PROPERTY", "COMPOUND_TEXT", "TEXT"};

const Flavour* flavourOf(const TargetName& target)
{
    const auto* found =
        std::ranges::find_if(readFlavours, [&](const Flavour& flavour) { return target == flavour.target; });
    return found == readFlavours.end() ? nullptr : found;
}

template <std::size_t N>
bool contains(const std::array<const char*, N>& names, const TargetName& target)
{
    return std::ranges::any_of(names, [&](const char* name) { return target == name; });
}

/// A target without a meaning here is a type under its own name.
bool passesThrough(const TargetName& target)
{
    return !flavourOf(target) && !contains(fileTargets, target) && !contains(protocolTargets, target) &&
           target != secretHint;
}

void addType(PasteboardContents& contents, const QString& type)
{
    if (!contents.types.contains(type))
        contents.types.append(type);
}

/// Returns the name of a format that has to be converted; null for all others.
const char* foreignFormat(Encoding encoding)
{
    switch (encoding) {
    case Encoding::bmp:
        return "bmp";
    case Encoding::jpeg:
        return "jpeg";
    default:
        return nullptr;
    }
}

std::optional<QByteArray> decode(Encoding encoding, const QByteArray& bytes)
{
    switch (encoding) {
    case Encoding::utf8:
        return QString::fromUtf8(bytes).toUtf8(); // bytes that aren't UTF-8 are replaced
    case Encoding::latin1:
        return decodeLatin1(bytes).toUtf8();
    case Encoding::unsure:
        return decodeText(bytes).toUtf8();
    case Encoding::mozUrl: {
        const auto url = decodeMozUrl(bytes);
        return url ? std::optional(url->toUtf8()) : std::nullopt;
    }
    case Encoding::png:
    case Encoding::raw:
    case Encoding::bmp:
    case Encoding::jpeg:
        return bytes;
    }
    return std::nullopt;
}

QByteArray linesOf(const QList<QUrl>& urls)
{
    QByteArrayList lines;
    for (const QUrl& url : urls)
        lines.append(url.toEncoded());
    return lines.join('\n');
}

void takeUrls(PasteboardContents& contents, const QStringList& wanted, const QList<QUrl>& urls)
{
    QList<QUrl> files;
    std::ranges::copy_if(urls, std::back_inserter(files), &QUrl::isLocalFile);
    if (!files.isEmpty()) {
        addType(contents, pasteboardType::fileURL);
        if (wanted.contains(pasteboardType::fileURL)) {
            contents.data.insert(pasteboardType::fileURL, files.first().toEncoded());
            contents.fileURLs = files;
        }
    } else if (!urls.isEmpty()) {
        addType(contents, pasteboardType::url);
        if (wanted.contains(pasteboardType::url) && !contents.data.contains(pasteboardType::url))
            contents.data.insert(pasteboardType::url, linesOf(urls));
    }
}

} // namespace

QStringList typesOfTargets(const QList<TargetName>& targets)
{
    QStringList types;
    for (const TargetName& target : targets) {
        const Flavour* flavour = flavourOf(target);
        if (!flavour && !passesThrough(target))
            continue;
        const QString type = flavour ? QString(flavour->type) : QString::fromUtf8(target);
        if (!types.contains(type))
            types.append(type);
    }
    return types;
}

std::vector<ReadStep> readSteps(const QList<TargetName>& targets, const QStringList& wantedTypes)
{
    std::vector<ReadStep> steps;
    if (targets.contains(secretHint))
        steps.push_back({ReadStep::Purpose::secretHint, {}, {secretHint}});
    ReadStep files{ReadStep::Purpose::files, {}, {}};
    for (const char* target : fileTargets) {
        if (targets.contains(target))
            files.targets.emplace_back(target);
    }
    if (!files.targets.empty())
        steps.push_back(std::move(files));
    for (qsizetype at = 0; at < wantedTypes.size(); ++at) {
        const QString& type = wantedTypes[at];
        if (wantedTypes.indexOf(type) != at)
            continue;
        ReadStep step{ReadStep::Purpose::type, type, {}};
        for (const Flavour& flavour : readFlavours) {
            if (type == flavour.type && targets.contains(flavour.target))
                step.targets.emplace_back(flavour.target);
        }
        const TargetName sameName = type.toUtf8();
        if (passesThrough(sameName) && targets.contains(sameName))
            step.targets.push_back(sameName);
        if (!step.targets.empty())
            steps.push_back(std::move(step));
    }
    return steps;
}

void takeAnswer(SelectionContents& read, const QStringList& wantedTypes, const ReadStep& step,
                const TargetName& target, const QByteArray& bytes)
{
    PasteboardContents& contents = read.contents;
    switch (step.purpose) {
    case ReadStep::Purpose::secretHint:
        if (bytes.startsWith("secret"))
            addType(contents, concealedType);
        return;
    case ReadStep::Purpose::files:
        takeUrls(contents, wantedTypes, target == uriList ? decodeUriList(bytes) : decodeCopiedFiles(bytes));
        return;
    case ReadStep::Purpose::type: {
        const Flavour* flavour = flavourOf(target);
        const Encoding encoding = flavour ? flavour->encoding : Encoding::raw;
        if (const char* format = foreignFormat(encoding)) {
            read.picture = ForeignPicture{bytes, format};
        } else if (const auto data = decode(encoding, bytes)) {
            addType(contents, step.type);
            contents.data.insert(step.type, *data);
        }
        return;
    }
    }
}

PasteboardContents ofTypes(PasteboardContents contents, const QStringList& types)
{
    contents.data.removeIf(
        [&](QMap<QString, QByteArray>::iterator entry) { return !types.contains(entry.key()); });
    if (!types.contains(pasteboardType::fileURL))
        contents.fileURLs.clear();
    return contents;
}

QList<TargetName> targetsOfContents(const PasteboardContents& contents)
{
    QList<TargetName> targets;
    for (const QString& type : contents.types) {
        const auto before = targets.size();
        for (const auto& [offeredType, target] : offeredFlavours) {
            if (type == offeredType)
                targets.append(target);
        }
        if (targets.size() == before)
            targets.append(type.toUtf8());
    }
    if (contents.types.contains(concealedType))
        targets.append(secretHint);
    return targets;
}

std::optional<TargetData> dataForTarget(const PasteboardContents& contents, const TargetName& target)
{
    if (!targetsOfContents(contents).contains(target))
        return std::nullopt;
    if (target == uriList)
        return TargetData{target, encodeUriList(contents.fileURLs)};
    if (contains(fileTargets, target))
        return TargetData{target, encodeCopiedFiles(contents.fileURLs)};
    if (target == secretHint)
        return TargetData{target, QByteArrayLiteral("secret")};
    if (target == "TEXT")
        return TargetData{QByteArrayLiteral("UTF8_STRING"), contents.data.value(pasteboardType::string)};
    const Flavour* flavour = flavourOf(target);
    const QString type = flavour ? QString(flavour->type) : QString::fromUtf8(target);
    const QByteArray data = contents.data.value(type);
    if (target == "STRING")
        return TargetData{target, QString::fromUtf8(data).toLatin1()};
    if (target == "text/x-moz-url")
        return TargetData{target, encodeMozUrl(QString::fromUtf8(data))};
    return TargetData{target, data};
}

} // namespace orvane
