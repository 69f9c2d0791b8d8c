// Keeps one way to the program in sight: its status item, or else the home window, at least as an entry of
// the task bar. With the Dock icon wanted, that entry is there in any case. Main thread.
#pragma once

#include "OrvaneCore/Base/Observable.h"
#include "Platform/NotificationCenter.h"

#include <chrono>
#include <memory>

namespace orvane {

class AppEnvironment;
class Timer;

class VisibleEntry : public std::enable_shared_from_this<VisibleEntry> {
public:
    /// A panel that is started at login, or again, has its status area within this time.
    static constexpr std::chrono::milliseconds patience{10'000};

    static std::shared_ptr<VisibleEntry> make(const std::shared_ptr<AppEnvironment>& environment);
    ~VisibleEntry();

    /// To be called at the end of the launch. Where no status item is to be seen, a person who has started
    /// the program sees its window, and a start by the session makes an entry of the task bar.
    void launched();

private:
    explicit VisibleEntry(const std::shared_ptr<AppEnvironment>& environment);

    /// False also while nobody knows whether there is a status area.
    [[nodiscard]] bool isItemMissing() const;
    [[nodiscard]] bool isEntryWanted() const;
    void preferencesChanged();
    void setPolicy();
    void areaChanged();
    void windowWentOutOfSight();
    void waitForArea();
    void showEntry();

    std::weak_ptr<AppEnvironment> m_environment;
    std::unique_ptr<NotificationCenter::Token> m_observer;
    std::unique_ptr<Timer> m_timer;
    bool m_hasLaunched = false;
    /// True until it is known what a start by a person shows.
    bool m_showsWindow = false;
    Cancellables m_cancellables;
};

} // namespace orvane
