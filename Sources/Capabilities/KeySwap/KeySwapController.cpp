#include "Capabilities/KeySwap/KeySwapController.h"

#include "Capabilities/KeySwap/KeySwapSubscriber.h"
#include "OrvaneCore/Base/Task.h"
#include "Platform/Platform.h"
#include "Platform/Workspace.h"

namespace orvane {

std::shared_ptr<KeySwapController> KeySwapController::make(std::shared_ptr<KeySwapSettings> settings,
                                                           std::shared_ptr<EventTapService> eventTap,
                                                           Logger log)
{
    std::shared_ptr<KeySwapController> controller(
        new KeySwapController(std::move(settings), std::move(eventTap), std::move(log)));
    // The link is weak: the tap's list of subscribers must not keep the controller alive.
    controller->m_subscriber->controller = controller;
    return controller;
}

KeySwapController::KeySwapController(std::shared_ptr<KeySwapSettings> settings,
                                     std::shared_ptr<EventTapService> eventTap, Logger log)
    : m_settings(std::move(settings)),
      m_eventTap(std::move(eventTap)),
      m_log(std::move(log)),
      m_subscriber(std::make_shared<KeySwapSubscriber>())
{
}

void KeySwapController::start()
{
    Workspace& workspace = platform().sharedWorkspace;
    const auto frontmost = workspace.frontmostApplication();
    m_frontmostBundleID = frontmost ? frontmost->bundleIdentifier : std::nullopt;

    m_activationObserver = workspace.notificationCenter().addObserver(
        Workspace::didActivateApplicationNotification(),
        [weak = weak_from_this()](const Notification& notification) {
            const QVariant value = notification.userInfo.value(Workspace::applicationKey());
            const auto bundleID = value.canConvert<RunningApplication>()
                                      ? value.value<RunningApplication>().bundleIdentifier
                                      : std::nullopt;
            startTask([weak, bundleID]() -> Task<> {
                if (const auto self = weak.lock())
                    self->m_frontmostBundleID = bundleID;
                co_return;
            });
        });
    m_eventTap->addSubscriber(m_subscriber);
    m_log.info(QStringLiteral("Keyboard remapping active"));
}

void KeySwapController::stop()
{
    m_eventTap->removeSubscriber(m_subscriber);
    m_activationObserver.reset();
}

std::optional<RemapFlags> KeySwapController::remap(const KeyChord& chord) const
{
    const RemapMode mode = m_settings->mode.get();
    if (mode == RemapMode::off)
        return std::nullopt;
    if (!AppExclusion::shouldRemap(m_frontmostBundleID, m_settings->exclusionMode.get(),
                                   m_settings->excludedApps.get()))
        return std::nullopt;
    return RemapEngine::outcome(chord, mode, RemapEngine::defaultShortcutKeyCodes()).flags();
}

} // namespace orvane
