#include "Worker/TextWork.h"

#include "Worker/TextPicture.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>
#include <unistd.h>

namespace orvane::TextWork {

using namespace WorkerProtocol;

namespace {

using tesseract::TessBaseAPI;

constexpr off_t largestModel = 256 * 1024 * 1024;

/// Tells if a descriptor is the file that it was before.
struct FileIdentity {
    dev_t device = 0;
    ino_t number = 0;
    off_t size = 0;
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

struct Model {
    std::string language;
    FileIdentity identity;
    friend bool operator==(const Model&, const Model&) = default;
};

FileIdentity identityOf(int file)
{
    struct stat status {};
    if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0 ||
        status.st_size > largestModel)
        throw std::runtime_error("the model is no plain file");
    return {status.st_dev, status.st_ino, status.st_size};
}

bool isName(std::string_view name)
{
    return !name.empty() && std::ranges::all_of(name, [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '_';
    });
}

std::vector<std::string> namesIn(const Languages& languages)
{
    const auto end = std::ranges::find(languages.names, '\0');
    if (std::ranges::any_of(end, languages.names.end(), [](char letter) { return letter != '\0'; }))
        throw std::runtime_error("the names don't end");
    std::vector<std::string> names;
    for (auto from = languages.names.begin();;) {
        const auto to = std::find(from, end, '+');
        names.emplace_back(from, to);
        if (to == end)
            break;
        from = to + 1;
    }
    if (!std::ranges::all_of(names, isName) || names.size() > mostLanguages)
        throw std::runtime_error("these are no names of languages");
    return names;
}

/// The library asks for a model by its path and has no room for a context.
struct Offered {
    std::string name;
    int file = -1;
};
std::vector<Offered> offered;

bool readModel(const char* path, std::vector<char>* bytes)
{
    const std::string_view whole(path);
    const std::string_view name = whole.substr(whole.rfind('/') + 1);
    const auto found =
        std::ranges::find_if(offered, [name](const Offered& model) { return model.name == name; });
    if (found == offered.end())
        return false;
    bytes->resize(static_cast<std::size_t>(identityOf(found->file).size));
    std::size_t done = 0;
    while (done < bytes->size()) {
        const ssize_t got =
            ::pread(found->file, bytes->data() + done, bytes->size() - done, static_cast<off_t>(done));
        if (got <= 0)
            return false;
        done += static_cast<std::size_t>(got);
    }
    return true;
}

/// An engine with the models that it was made of.
class Engine {
public:
    Engine(std::vector<Model> models, std::span<const int> files) : m_models(std::move(models))
    {
        std::string languages;
        offered.clear();
        for (std::size_t index = 0; index < m_models.size(); ++index) {
            const std::string& language = m_models[index].language;
            languages += (index == 0 ? "" : "+") + language;
            offered.push_back({language + ".traineddata", files[index]});
        }
        const int failed = m_api.Init("/", 0, languages.c_str(), tesseract::OEM_LSTM_ONLY, nullptr, 0,
                                      nullptr, nullptr, false, &readModel);
        offered.clear();
        if (failed != 0)
            throw std::runtime_error("the models can't be loaded");
    }

    [[nodiscard]] const std::vector<Model>& models() const { return m_models; }
    [[nodiscard]] TessBaseAPI& api() { return m_api; }

private:
    const std::vector<Model> m_models;
    TessBaseAPI m_api;
};

TessBaseAPI& engineFor(std::span<const int> files, const Languages& languages)
{
    static std::unique_ptr<Engine> engine;
    const auto names = namesIn(languages);
    if (names.size() != files.size())
        throw std::runtime_error("there isn't one model for each language");
    std::vector<Model> models;
    for (std::size_t index = 0; index < names.size(); ++index)
        models.push_back({names[index], identityOf(files[index])});
    if (!engine || engine->models() != models) {
        engine.reset(); // one of them is large enough
        engine = std::make_unique<Engine>(std::move(models), files);
    }
    return engine->api();
}

std::string linesOf(TessBaseAPI& engine)
{
    std::string lines;
    const std::unique_ptr<tesseract::ResultIterator> place(engine.GetIterator());
    if (!place)
        return lines;
    do {
        const std::unique_ptr<char[]> line(place->GetUTF8Text(tesseract::RIL_TEXTLINE));
        if (!line)
            continue;
        std::string_view text(line.get());
        while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
            text.remove_suffix(1);
        if (!text.empty())
            lines.append(text).push_back('\n');
    } while (place->Next(tesseract::RIL_TEXTLINE));
    return lines;
}

std::string textOf(TessBaseAPI& engine, tesseract::PageSegMode mode)
{
    engine.SetPageSegMode(mode);
    if (engine.Recognize(nullptr) != 0)
        throw std::runtime_error("the text can't be read");
    return linesOf(engine);
}

void write(int file, std::string_view text)
{
    struct stat status {};
    if (::fstat(file, &status) != 0 || static_cast<std::size_t>(status.st_size) < text.size())
        throw std::runtime_error("there is no room for the text");
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t written =
            ::pwrite(file, text.data() + done, text.size() - done, static_cast<off_t>(done));
        if (written <= 0)
            throw std::runtime_error("the text can't be written");
        done += static_cast<std::size_t>(written);
    }
}

} // namespace

void prepare(std::span<const int> models, const Languages& languages)
{
    engineFor(models, languages);
}

Written read(int memory, std::span<const int> models, const ReadText& order)
{
    TessBaseAPI& engine = engineFor(models, order.languages);
    const TextPicture picture = readTextPicture(memory, order.size);
    engine.SetImage(picture.get());
    std::string text = textOf(engine, tesseract::PSM_AUTO);
    // A word or two are too little for the search for columns.
    if (text.empty())
        text = textOf(engine, tesseract::PSM_SINGLE_BLOCK);
    engine.Clear();
    write(memory, text);
    return {text.size()};
}

} // namespace orvane::TextWork
