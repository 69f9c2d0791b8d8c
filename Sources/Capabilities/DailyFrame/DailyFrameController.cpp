#include "Capabilities/DailyFrame/DailyFrameController.h"

#include "Capabilities/DailyFrame/Sources/BingSource.h"
#include "Capabilities/DailyFrame/Sources/UnsplashSource.h"
#include "OrvaneCore/Base/HttpGet.h"
#include "Platform/Pictures.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

#include <QDateTime>
#include <QLocale>
#include <QSet>

namespace orvane {

namespace {

const QString lastChangeDay = QStringLiteral("lastChangeDay");

/// Returns the main display's size in pixels.
Pictures::Size primaryPixelSize()
{
    const auto screen = platform().screens.mainScreen();
    if (!screen)
        return {2560, 1600};
    const double scale = screen->backingScaleFactor;
    return {static_cast<int>(screen->frame.width() * scale),
            static_cast<int>(screen->frame.height() * scale)};
}

std::vector<Rect> framesOfScreens()
{
    std::vector<Rect> frames;
    for (const Screen& screen : platform().screens.screens())
        frames.push_back(screen.frame);
    return frames;
}

} // namespace

void DailyFrameController::start()
{
    const auto weak = weak_from_this();
    const auto refresh = [weak] {
        if (const auto self = weak.lock())
            self->refreshIfNeeded();
    };
    m_dailyTimer = platform().mainRunLoop.scheduleTimer(checkInterval, RunLoop::Repeats::yes, refresh);
    observe();
    platform().mainRunLoop.perform(refresh);
    m_log.notice(QStringLiteral("The daily change is on"));
}

void DailyFrameController::observe()
{
    const auto weak = weak_from_this();
    m_frames = framesOfScreens();
    m_screenObserver = platform().defaultNotificationCenter.addObserver(
        Screens::didChangeScreenParametersNotification(), [weak](const Notification&) {
            if (const auto self = weak.lock())
                self->noticeScreens();
        });
    m_wakeObserver = platform().sharedWorkspace.notificationCenter().addObserver(
        Workspace::didWakeNotification(), [weak](const Notification&) {
            if (const auto self = weak.lock())
                self->refreshIfNeeded();
        });
}

void DailyFrameController::stop()
{
    m_dailyTimer.reset();
    m_screenObserver.reset();
    m_wakeObserver.reset();
}

/// A panel that comes or goes changes the displays' parameters too, but not what they show of the picture.
void DailyFrameController::noticeScreens()
{
    const std::vector<Rect> frames = framesOfScreens();
    if (std::exchange(m_frames, frames) != frames)
        reapplyCurrent();
}

QString DailyFrameController::dayString(Clock::Date date)
{
    const auto sinceEpoch = std::chrono::floor<std::chrono::milliseconds>(date.time_since_epoch());
    return QLocale::c().toString(QDateTime::fromMSecsSinceEpoch(sinceEpoch.count()),
                                 QStringLiteral("yyyy-MM-dd"));
}

void DailyFrameController::refreshIfNeeded()
{
    const QString today = dayString(platform().clock.date());
    if (m_settings->prefs().string(lastChangeDay) == today && current.get())
        return;
    run(weak_from_this(), {.kind = Job::Kind::fetch, .day = today});
}

void DailyFrameController::changeNow()
{
    enqueue({.kind = Job::Kind::fetch});
}

void DailyFrameController::next()
{
    enqueue({.kind = Job::Kind::shift, .delta = -1});
}

void DailyFrameController::previous()
{
    enqueue({.kind = Job::Kind::shift, .delta = 1});
}

void DailyFrameController::reapplyCurrent()
{
    if (current.get())
        enqueue({.kind = Job::Kind::reapply});
}

void DailyFrameController::reloadForSourceChange()
{
    m_history.clear();
    m_index = 0;
    changeNow();
}

bool DailyFrameController::canGoOlder() const
{
    return m_index + 1 < m_history.size() || m_settings->source.get() == SourceKind::unsplash;
}

void DailyFrameController::enqueue(const Job& job)
{
    platform().mainRunLoop.perform([weak = weak_from_this(), job] { run(weak, job); });
}

UnownedTask DailyFrameController::run(std::weak_ptr<DailyFrameController> weak, Job job)
{
    // The controller may end at each wait, so nothing holds it meanwhile.
    auto self = weak.lock();
    if (!self || self->isWorking.get())
        co_return;
    self->isWorking.set(true);
    self->statusMessage.set(std::nullopt);
    std::optional<QString> failure;
    try {
        if (self->hasToFetch(job)) {
            const auto source = self->makeSource();
            const Pictures::Size size = primaryPixelSize();
            const Http::Request list{.url = source->request(size.width, size.height),
                                     .mostBytes = WallpaperSource::mostBytes};
            self.reset();
            const Http::Response response = co_await HttpGet(platform().http, list);
            auto decode = [source, response] { return source->items(response); };
            const QList<WallpaperItem> items = co_await onPool(decode);
            self = weak.lock();
            if (!self)
                co_return;
            self->take(items, job);
        }
        const auto item = self->choose(job);
        if (item) {
            self.reset();
            const Http::Request wanted = WallpaperManager::request(*item);
            Http::Response picture = co_await HttpGet(platform().http, wanted);
            self = weak.lock();
            if (!self)
                co_return;
            auto apply = [manager = self->m_manager, item = *item, picture = std::move(picture),
                          screens = self->wantedScreens(),
                          copy = self->wantedCopy()] { return manager.apply(item, picture, screens, copy); };
            self.reset();
            const QString file = co_await onPool(apply);
            self = weak.lock();
            if (!self)
                co_return;
            self->finish(job, *item, file);
        }
    } catch (const std::exception& error) {
        failure = QString::fromUtf8(error.what());
    }
    if (const auto alive = weak.lock())
        alive->end(failure);
}

bool DailyFrameController::hasToFetch(const Job& job) const
{
    switch (job.kind) {
    case Job::Kind::fetch:
        return true;
    case Job::Kind::reapply:
        return false;
    case Job::Kind::shift:
        return !m_history.isEmpty() && m_index + job.delta >= m_history.size();
    }
    return false;
}

/// Takes a list that was fetched: it becomes the history, or its unknown pictures are added there.
void DailyFrameController::take(const QList<WallpaperItem>& items, const Job& job)
{
    if (job.kind == Job::Kind::fetch) {
        m_history = items;
        m_index = 0;
        return;
    }
    QSet<QString> known;
    for (const WallpaperItem& item : std::as_const(m_history))
        known.insert(item.id);
    for (const WallpaperItem& item : items) {
        if (!known.contains(item.id)) {
            known.insert(item.id);
            m_history.append(item);
        }
    }
}

/// Returns the picture to be shown, and makes its place the present one; nothing when there is none.
std::optional<WallpaperItem> DailyFrameController::choose(const Job& job)
{
    if (job.kind == Job::Kind::reapply)
        return current.get();
    const int target = m_index + job.delta;
    if (target < 0 || target >= m_history.size())
        return std::nullopt;
    m_index = target;
    return m_history.at(target);
}

void DailyFrameController::finish(const Job& job, const WallpaperItem& item, const QString& file)
{
    current.set(item);
    currentFile.set(file);
    if (job.day)
        m_settings->prefs().set(*job.day, lastChangeDay);
    m_log.info(QStringLiteral("The desktop shows %1").arg(file));
}

void DailyFrameController::end(const std::optional<QString>& failure)
{
    if (failure) {
        statusMessage.set(failure);
        m_log.error(*failure);
    }
    isWorking.set(false);
}

std::shared_ptr<const WallpaperSource> DailyFrameController::makeSource() const
{
    if (m_settings->source.get() == SourceKind::unsplash)
        return std::make_shared<UnsplashSource>();
    return std::make_shared<BingSource>(m_settings->bingMarket.get());
}

QList<Screen> DailyFrameController::wantedScreens() const
{
    if (m_settings->applyToAllDisplays.get())
        return platform().screens.screens();
    const auto main = platform().screens.mainScreen();
    return main ? QList<Screen>{*main} : QList<Screen>{};
}

WallpaperManager::Copy DailyFrameController::wantedCopy() const
{
    return m_settings->saveToFolder.get() ? WallpaperManager::Copy::toPictures : WallpaperManager::Copy::none;
}

} // namespace orvane
