#include "Fakes/FakePasteboard.h"

#include <algorithm>
#include <utility>

namespace orvane {

struct FakePasteboard::Request {
    QStringList types;
    Completion completion;
};

class FakePasteboard::Read : public PasteboardRead {
public:
    explicit Read(std::shared_ptr<Request> request) : m_request(std::move(request)) {}

private:
    std::shared_ptr<Request> m_request;
};

class FakePasteboard::Watch {
public:
    explicit Watch(std::function<void()> theHandler) : handler(std::move(theHandler)) {}
    const std::function<void()> handler;
};

std::unique_ptr<PasteboardWatch> FakePasteboard::watch(std::function<void()> handler)
{
    class Token : public PasteboardWatch {
    public:
        explicit Token(std::shared_ptr<Watch> watch) : m_watch(std::move(watch)) {}

    private:
        std::shared_ptr<Watch> m_watch;
    };
    if (!announcesCopies)
        return nullptr;
    auto watch = std::make_shared<Watch>(std::move(handler));
    m_watches.push_back(watch);
    return std::make_unique<Token>(std::move(watch));
}

void FakePasteboard::announce()
{
    for (const auto& watch : m_watches) {
        m_runLoop.perform([watch] {
            if (const auto alive = watch.lock())
                alive->handler();
        });
    }
}

std::unique_ptr<PasteboardRead> FakePasteboard::read(const QStringList& types, Completion completion)
{
    ++reads;
    auto request = std::make_shared<Request>(Request{types, std::move(completion)});
    m_runLoop.perform([this, waiting = std::weak_ptr(request)] { complete(waiting); });
    return std::make_unique<Read>(std::move(request));
}

void FakePasteboard::complete(const std::weak_ptr<Request>& waiting)
{
    const auto request = waiting.lock();
    if (!request)
        return;
    if (m_isOurs ? m_isHeld : m_owner == Owner::hangs) {
        m_waiting.push_back(waiting);
        return;
    }
    const Completion completion = std::exchange(request->completion, {}); // the completion may end its own
                                                                          // read
    if (m_owner == Owner::fails && !m_isOurs) {
        completion(std::nullopt);
        return;
    }
    PasteboardContents read = m_contents;
    if (!request->types.contains(pasteboardType::fileURL))
        read.fileURLs.clear();
    read.data.removeIf(
        [&](QMap<QString, QByteArray>::iterator entry) { return !request->types.contains(entry.key()); });
    completion(std::move(read));
}

int FakePasteboard::clearContents()
{
    onClear();
    m_contents = PasteboardContents{.changeCount = m_contents.changeCount + 1};
    m_isOurs = true;
    announce();
    return m_contents.changeCount;
}

bool FakePasteboard::setString(const QString& string, const QString& type)
{
    return setData(string.toUtf8(), type);
}

bool FakePasteboard::setData(const QByteArray& data, const QString& type)
{
    if (type == pasteboardType::fileURL)
        return writeObjects(QList{QUrl::fromEncoded(data)});
    if (!m_isOurs || refusesWrites)
        return false;
    m_contents.data.insert(type, data);
    addType(type);
    return true;
}

bool FakePasteboard::writeObjects(const QList<QUrl>& fileURLs)
{
    if (!m_isOurs || !std::ranges::all_of(fileURLs, &QUrl::isLocalFile) || fileURLs.isEmpty())
        return false;
    m_contents.fileURLs = fileURLs;
    m_contents.data.insert(pasteboardType::fileURL, fileURLs.first().toEncoded());
    addType(pasteboardType::fileURL);
    return true;
}

bool FakePasteboard::writeObjects(const PasteboardImage& image)
{
    return image.png.startsWith("\x89PNG\r\n\x1A\n") && setData(image.png, pasteboardType::png);
}

void FakePasteboard::copy(PasteboardContents contents)
{
    contents.changeCount = m_contents.changeCount + 1;
    m_contents = std::move(contents);
    m_isOurs = false;
    if (!m_contents.fileURLs.isEmpty())
        m_contents.data.insert(pasteboardType::fileURL, m_contents.fileURLs.first().toEncoded());
    for (const QString& type : m_contents.data.keys())
        addType(type);
    announce();
}

void FakePasteboard::copyString(const QString& string)
{
    copy({.data = {{pasteboardType::string, string.toUtf8()}}});
}

void FakePasteboard::setOwner(Owner owner)
{
    m_owner = owner;
    completeWaiting();
}

void FakePasteboard::setHeld(bool isHeld)
{
    m_isHeld = isHeld;
    completeWaiting();
}

void FakePasteboard::completeWaiting()
{
    for (const auto& request : std::exchange(m_waiting, {}))
        m_runLoop.perform([this, request] { complete(request); });
}

void FakePasteboard::addType(const QString& type)
{
    if (!m_contents.types.contains(type))
        m_contents.types.append(type);
}

} // namespace orvane
