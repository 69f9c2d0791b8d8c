// Decides about each key chord by the settings and the program in front. Main thread.
#pragma once

#include "Capabilities/KeySwap/KeySwapSettings.h"
#include "OrvaneCore/Base/Log.h"
#include "OrvaneCore/Input/EventTapService.h"
#include "Platform/NotificationCenter.h"

#include <memory>
#include <optional>

namespace orvane {

class KeySwapSubscriber;

class KeySwapController : public std::enable_shared_from_this<KeySwapController> {
public:
    static std::shared_ptr<KeySwapController> make(std::shared_ptr<KeySwapSettings> settings,
                                                   std::shared_ptr<EventTapService> eventTap, Logger log);

    [[nodiscard]] const std::shared_ptr<KeySwapSettings>& settings() const { return m_settings; }

    void start();
    void stop();

    /// Returns the new flags of a chord, or nothing when it stays unchanged. Reads the settings each time, so
    /// a change holds for the very next key. Runs for every key, so it allocates nothing.
    [[nodiscard]] std::optional<RemapFlags> remap(const KeyChord& chord) const;

private:
    KeySwapController(std::shared_ptr<KeySwapSettings> settings, std::shared_ptr<EventTapService> eventTap,
                      Logger log);

    std::shared_ptr<KeySwapSettings> m_settings;
    std::shared_ptr<EventTapService> m_eventTap;
    Logger m_log;
    std::shared_ptr<KeySwapSubscriber> m_subscriber;
    std::unique_ptr<NotificationCenter::Token> m_activationObserver;
    std::optional<QString> m_frontmostBundleID;
};

} // namespace orvane
