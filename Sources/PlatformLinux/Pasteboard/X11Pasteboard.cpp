#include "PlatformLinux/Pasteboard/X11Pasteboard.h"

#include "PlatformLinux/Common/LinuxText.h"
#include "PlatformLinux/Pasteboard/PasteboardFormats.h"
#include "PlatformLinux/Pasteboard/PasteboardState.h"
#include "PlatformLinux/Pasteboard/PasteboardThread.h"
#include "PlatformLinux/Pasteboard/PasteboardWatches.h"
#include "PlatformLinux/Worker/WorkerPictures.h"

#include <algorithm>
#include <chrono>
#include <stop_token>
#include <utility>

namespace orvane {

/// Alive only on the main thread: the other thread knows it by a weak reference and a number.
class X11Pasteboard::Read : public PasteboardRead {
public:
    using Shared = std::shared_ptr<Completion>;

    Read(Shared completion, std::weak_ptr<PasteboardThread> thread)
        : m_completion(std::move(completion)), m_thread(std::move(thread))
    {
    }
    ~Read() override
    {
        m_stop.request_stop();
        const auto thread = m_thread.lock();
        if (thread && *m_completion)
            thread->cancelRead(m_id);
    }
    void setId(PasteboardThread::ReadId id) { m_id = id; }
    /// Stopped at this object's end.
    [[nodiscard]] std::stop_token stopToken() const { return m_stop.get_token(); }

private:
    Shared m_completion;
    std::weak_ptr<PasteboardThread> m_thread;
    PasteboardThread::ReadId m_id = 0;
    std::stop_source m_stop;
};

namespace {

/// The time that the conversion of a picture may take.
constexpr std::chrono::seconds longestConversion{10};

/// Adds the picture as PNG, if it can be converted in time and is wanted until then.
void convertPicture(WorkerPictures& pictures, SelectionContents& read, const std::stop_token& stop)
{
    const ForeignPicture picture = *std::exchange(read.picture, {});
    if (auto png = pictures.png(picture.bytes, picture.format, stop))
        read.contents.data.insert(pasteboardType::png, *std::move(png));
}

/// Calls the completion of a read in a later turn, if the read still exists.
void complete(RunLoop& runLoop, const std::weak_ptr<Pasteboard::Completion>& completion,
              std::optional<PasteboardContents> contents)
{
    runLoop.perform([completion, contents = std::move(contents)]() mutable {
        const auto kept = completion.lock();
        if (!kept)
            return;
        if (const auto call = std::exchange(*kept, {})) // the completion may end its own read
            call(std::move(contents));
    });
}

} // namespace

X11Pasteboard::X11Pasteboard(LogSink& log, RunLoop& runLoop, SessionKind session, const QString& desktops)
    : m_log(log),
      m_runLoop(runLoop),
      m_session(session),
      m_desktopPassesCopiesOn(desktops.split(u':').contains(QStringLiteral("GNOME"))),
      m_state(std::make_shared<PasteboardState>()),
      m_watches(std::make_shared<PasteboardWatches>(runLoop)),
      m_pictures(std::make_shared<WorkerPictures>(log, longestConversion))
{
}

X11Pasteboard::~X11Pasteboard() = default;

QString X11Pasteboard::limitation() const
{
    switch (m_session) {
    case SessionKind::xwayland:
        if (m_desktopPassesCopiesOn)
            return {};
        return LinuxText::tr(
            "In this Wayland session Orvane would miss what you copy in Wayland programs, so "
            "this stays off. In an X11 session it gets every copy.");
    case SessionKind::waylandAlone:
    case SessionKind::withoutServer:
        return LinuxText::tr("There is no X server, through which Orvane gets what you copy.");
    case SessionKind::x11:
        break;
    }
    return {};
}

const std::shared_ptr<PasteboardThread>& X11Pasteboard::thread() const
{
    if (!m_thread)
        m_thread = std::make_shared<PasteboardThread>(m_log, m_state, m_watches);
    return m_thread;
}

int X11Pasteboard::changeCount() const
{
    static_cast<void>(thread()); // changes are counted from the first call on
    return m_state->changeCount();
}

std::unique_ptr<PasteboardWatch> X11Pasteboard::watch(std::function<void()> handler)
{
    static_cast<void>(thread());
    return m_watches->add(std::move(handler));
}

std::unique_ptr<PasteboardRead> X11Pasteboard::read(const QStringList& types, Completion completion)
{
    auto shared = std::make_shared<Completion>(std::move(completion));
    auto token = std::make_unique<Read>(shared, thread());
    auto answer = [&runLoop = m_runLoop, pictures = m_pictures, stop = token->stopToken(),
                   weak = std::weak_ptr(shared)](std::optional<SelectionContents> read) {
        if (!read || !read->picture) {
            complete(runLoop, weak, read ? std::optional(std::move(read->contents)) : std::nullopt);
            return;
        }
        runLoop.performDetached([&runLoop, pictures, stop, weak, read = *std::move(read)]() mutable {
            convertPicture(*pictures, read, stop);
            complete(runLoop, weak, std::move(read.contents));
        });
    };
    token->setId(thread()->read(types, std::move(answer)));
    return token;
}

void X11Pasteboard::giveUp()
{
    m_pictures->giveUp();
}

int X11Pasteboard::clearContents()
{
    const int count = m_state->claim();
    m_watches->announce();
    thread()->claim();
    // The content of this turn is complete before others look.
    m_runLoop.perform(
        [state = m_state, thread = std::weak_ptr(thread()), generation = m_state->generation()] {
            state->finishWriting(generation);
            if (const auto running = thread.lock())
                running->writingFinished();
        });
    return count;
}

bool X11Pasteboard::setString(const QString& string, const QString& type)
{
    return setData(string.toUtf8(), type);
}

bool X11Pasteboard::setData(const QByteArray& data, const QString& type)
{
    if (type == pasteboardType::fileURL)
        return writeObjects(QList{QUrl::fromEncoded(data)});
    return m_state->add(type, data);
}

bool X11Pasteboard::writeObjects(const QList<QUrl>& fileURLs)
{
    if (fileURLs.isEmpty() || !std::ranges::all_of(fileURLs, &QUrl::isLocalFile))
        return false;
    return m_state->addFiles(fileURLs);
}

bool X11Pasteboard::writeObjects(const PasteboardImage& image)
{
    return isPng(image.png) && setData(image.png, pasteboardType::png);
}

} // namespace orvane
