// A new picture on the desktop once a day, and others by hand. Main thread.
//
// One job runs at a time: what is asked for meanwhile is dropped.
#pragma once

#include "Capabilities/DailyFrame/DailyFrameSettings.h"
#include "Capabilities/DailyFrame/WallpaperManager.h"
#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Base/Pool.h"
#include "Platform/Clock.h"
#include "Platform/NotificationCenter.h"
#include "Platform/RunLoop.h"

#include <memory>
#include <vector>

namespace orvane {

class DailyFrameController : public std::enable_shared_from_this<DailyFrameController> {
public:
    static constexpr std::chrono::seconds checkInterval{1800};

    DailyFrameController(std::shared_ptr<DailyFrameSettings> settings, WallpaperManager manager, Logger log)
        : m_settings(std::move(settings)), m_manager(manager), m_log(std::move(log))
    {
    }

    /// Begins the daily change: a check now, every half hour and after each sleep. A display that comes gets
    /// the picture.
    void start();
    /// Ends the daily change; a running job goes on.
    void stop();

    // Each of these begins in a later turn of the run loop.
    void changeNow();
    /// Toward newer pictures.
    void next();
    /// Toward older pictures.
    void previous();
    /// Shows the present picture again, by the present options. Does nothing without one.
    void reapplyCurrent();
    /// Forgets the list, at once, and then does as `changeNow`.
    void reloadForSourceChange();

    [[nodiscard]] bool canGoOlder() const;
    [[nodiscard]] bool canGoNewer() const { return m_index >= 1; }

    [[nodiscard]] const std::shared_ptr<DailyFrameSettings>& settings() const { return m_settings; }
    /// The pictures that are known, the newest first.
    [[nodiscard]] const QList<WallpaperItem>& history() const { return m_history; }
    /// The place of the present picture among them.
    [[nodiscard]] int index() const { return m_index; }

    /// The picture on the desktop.
    Observable<std::optional<WallpaperItem>> current;
    /// Its file.
    Observable<std::optional<QString>> currentFile;
    Observable<bool> isWorking;
    /// Why the last job failed.
    Observable<std::optional<QString>> statusMessage;

    /// The day in the present time zone, as it is stored.
    [[nodiscard]] static QString dayString(Clock::Date date);

private:
    struct Job {
        enum class Kind { fetch, reapply, shift };
        Kind kind = Kind::fetch;
        /// To be stored when the job has succeeded.
        std::optional<QString> day = std::nullopt;
        /// Added to the index by a shift.
        int delta = 0;
    };

    void refreshIfNeeded();
    void observe();
    void noticeScreens();
    void enqueue(const Job& job);
    static UnownedTask run(std::weak_ptr<DailyFrameController> weak, Job job);
    [[nodiscard]] bool hasToFetch(const Job& job) const;
    void take(const QList<WallpaperItem>& items, const Job& job);
    [[nodiscard]] std::optional<WallpaperItem> choose(const Job& job);
    void finish(const Job& job, const WallpaperItem& item, const QString& file);
    void end(const std::optional<QString>& failure);

    [[nodiscard]] std::shared_ptr<const WallpaperSource> makeSource() const;
    [[nodiscard]] QList<Screen> wantedScreens() const;
    [[nodiscard]] WallpaperManager::Copy wantedCopy() const;

    std::shared_ptr<DailyFrameSettings> m_settings;
    WallpaperManager m_manager;
    Logger m_log;
    QList<WallpaperItem> m_history;
    int m_index = 0;
    std::unique_ptr<Timer> m_dailyTimer;
    std::unique_ptr<NotificationCenter::Token> m_screenObserver;
    std::unique_ptr<NotificationCenter::Token> m_wakeObserver;
    /// The displays' frames when they were last looked at.
    std::vector<Rect> m_frames;
};

} // namespace orvane
