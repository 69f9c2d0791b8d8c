#include "PlatformLinux/Worker/WorkerTextRecognition.h"

#include "PlatformLinux/Common/HelperProgram.h"
#include "PlatformLinux/Worker/PixelMemory.h"
#include "PlatformLinux/X11/XExchange.h"

#include <QFile>
#include <QLocale>

#include <algorithm>
#include <utility>

#include <fcntl.h>

namespace orvane {

using namespace WorkerProtocol;
using namespace std::chrono_literals;

namespace {

constexpr auto patience = 500ms;
/// A text is never longer than this and than its pixels.
constexpr std::size_t leastMemory = 65'536;

/// Debian's, and what others have.
QStringList modelFolders()
{
    return {QStringLiteral("/usr/share/tesseract-ocr/5/tessdata"),
            QStringLiteral("/usr/share/tesseract-ocr/tessdata"),
            QStringLiteral("/usr/share/tesseract/tessdata"), QStringLiteral("/usr/share/tessdata")};
}

/// Nothing without an X server that answers in time.
QStringList keyboardLayouts()
{
    const auto opened = XLink::open({}, within(patience));
    if (!opened.link)
        return {};
    XExchange exchange(*opened.link, within(patience));
    constexpr std::string_view name = "_XKB_RULES_NAMES";
    const auto atom =
        exchange.reply<xcb_intern_atom_reply_t>(xcb_intern_atom(exchange.xcb(), 1, name.size(), name.data()));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return {};
    const std::string rules =
        exchange.bytes(exchange.askProperty(opened.link->root(), atom->atom, XCB_ATOM_STRING));
    return TextLanguages::layoutsIn(QByteArray::fromStdString(rules));
}

TextLanguages findLanguages()
{
    return {TextLanguages::ofUser(QLocale::system().uiLanguages(), keyboardLayouts()), modelFolders()};
}

/// The open models, as far as they can be opened, and their names.
struct OpenModels {
    explicit OpenModels(const TextLanguages& languages)
    {
        for (const TextLanguages::Model& model : languages.models()) {
            FileDescriptor file(::open(QFile::encodeName(model.path).constData(), O_RDONLY | O_CLOEXEC));
            const QByteArray name = (names.isEmpty() ? "" : "+") + model.language.toLatin1();
            if (!file || names.size() + name.size() > qsizetype(sizeof payload.names))
                continue;
            names += name;
            files.push_back(std::move(file));
        }
        std::ranges::copy(names, payload.names.begin());
    }

    /// Returns the descriptors, and before them that of `memory` unless it's negative.
    [[nodiscard]] std::vector<int> descriptors(int memory = -1) const
    {
        std::vector<int> all;
        if (memory >= 0)
            all.push_back(memory);
        for (const FileDescriptor& file : files)
            all.push_back(file.get());
        return all;
    }

    QByteArray names;
    std::vector<FileDescriptor> files;
    WorkerProtocol::Languages payload;
};

/// Nothing when the size isn't that of the pixels, or isn't allowed.
std::optional<PictureSize> sizeOf(const TextRecognition::Image& image)
{
    if (image.width < 1 || image.height < 1)
        return std::nullopt;
    const PictureSize size{static_cast<std::uint32_t>(image.width), static_cast<std::uint32_t>(image.height)};
    const std::uint64_t area = std::uint64_t{size.width} * size.height;
    const bool isSound = isAllowed(size) && area <= largestTextArea &&
                         static_cast<std::uint64_t>(image.pixels.size()) == area * 4;
    return isSound ? std::optional(size) : std::nullopt;
}

/// The text may say anything, so it gets no character that would act instead of being seen.
QStringList linesIn(const QByteArray& bytes)
{
    QStringList lines;
    for (QString line : QString::fromUtf8(bytes).split(u'\n')) {
        line.removeIf([](QChar character) { return character.category() == QChar::Other_Control; });
        line = line.trimmed();
        if (!line.isEmpty())
            lines.append(line);
    }
    return lines;
}

} // namespace

WorkerTextRecognition::WorkerTextRecognition(LogSink& log)
    : m_findLanguages(&findLanguages), m_client([] { return helperProgram("orvane-worker"); }, log, timeLimit)
{
}

WorkerTextRecognition::WorkerTextRecognition(QByteArray program, std::function<TextLanguages()> findLanguages,
                                             LogSink& log, std::chrono::milliseconds limit)
    : m_findLanguages(std::move(findLanguages)),
      m_client([program = std::move(program)] { return program; }, log, limit)
{
}

TextRecognition::Languages WorkerTextRecognition::languages()
{
    return m_findLanguages().described();
}

void WorkerTextRecognition::prepare(std::stop_token stop)
{
    const OpenModels models(m_findLanguages());
    // What fails now fails again when there is something to be read, and is told then.
    if (!models.files.empty())
        std::ignore = m_client.ask(Kind::prepareText, bytesOf(models.payload), models.descriptors(), stop);
}

std::optional<QStringList> WorkerTextRecognition::recognize(const Image& image, std::stop_token stop)
{
    const auto size = sizeOf(image);
    const OpenModels models(size ? m_findLanguages() : TextLanguages({}, {}));
    if (models.files.empty())
        return std::nullopt;
    const std::size_t room = std::max(static_cast<std::size_t>(image.pixels.size()), leastMemory);
    const FileDescriptor memory = PixelMemory::make(room);
    if (!memory || !PixelMemory::write(memory.get(), image.pixels))
        return std::nullopt;
    const ReadText order{*size, models.payload};
    const auto answer = m_client.ask(Kind::readText, bytesOf(order), models.descriptors(memory.get()), stop);
    const auto written = answer ? payloadAs<Written>(*answer) : std::nullopt;
    if (!written || written->bytes > room)
        return std::nullopt;
    const auto bytes = PixelMemory::read(memory.get(), static_cast<qsizetype>(written->bytes));
    return bytes ? std::optional(linesIn(*bytes)) : std::nullopt;
}

} // namespace orvane
