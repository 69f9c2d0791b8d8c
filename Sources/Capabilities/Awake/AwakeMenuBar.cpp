#include "Capabilities/Awake/AwakeMenuBar.h"

#include "Capabilities/Awake/AwakeController.h"
#include "Capabilities/Awake/AwakeText.h"
#include "OrvaneCore/Base/OrvaNotifications.h"
#include "OrvaneKit/Theme/SystemSymbol.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Platform.h"
#include "Platform/StatusBar.h"

namespace orvane {

AwakeMenuBar::AwakeMenuBar(std::weak_ptr<AwakeController> controller)
    : m_controller(std::move(controller)),
      m_statusItem(platform().systemStatusBar.makeStatusItem(StatusItem::squareLength))
{
    m_statusItem->setAutosaveName(QStringLiteral("net.lindenrow.orvane.awake"));
    m_statusItem->setAction([this](const StatusItemEvent* event) { clicked(event); });
    m_statusItem->setToolTip(AwakeText::tr("Orvane Awake"));
    refreshIcon();
}

AwakeMenuBar::~AwakeMenuBar() = default;

void AwakeMenuBar::refreshIcon()
{
    const auto controller = m_controller.lock();
    m_statusItem->setImage(controller && controller->isAwake.get()
                               ? SystemSymbol::image(QStringLiteral("eye.fill"), AwakeText::tr("Awake"))
                               : SystemSymbol::image(QStringLiteral("eye.slash"), AwakeText::tr("Asleep")));
}

void AwakeMenuBar::clicked(const StatusItemEvent* currentEvent)
{
    const auto controller = m_controller.lock();
    if (!controller)
        return;
    const bool wantsMenu = currentEvent && (currentEvent->type == StatusItemEvent::Type::rightMouseUp ||
                                            (currentEvent->modifierFlags & eventFlag::control) != 0);
    if (wantsMenu)
        showMenu();
    else
        controller->toggleDefault();
}

void AwakeMenuBar::showMenu()
{
    const auto controller = m_controller.lock();
    if (!controller)
        return;
    // The menu is attached for this one opening only, so that a plain click keeps toggling.
    m_statusItem->setMenu([menu = makeMenu(*controller)] { return menu; });
    m_statusItem->performClick();
    m_statusItem->setMenu(nullptr);
}

Menu AwakeMenuBar::makeMenu(const AwakeController& controller)
{
    const std::weak_ptr<AwakeMenuBar*> weak = m_self;
    const auto item = [weak](const QString& title, void (AwakeMenuBar::*action)()) {
        MenuItem made;
        made.title = title;
        made.action = [weak, action](const MenuItem&) {
            if (const auto self = weak.lock())
                ((*self)->*action)();
        };
        return made;
    };

    Menu menu;
    menu.items.append(
        item(controller.hasPeriod() ? AwakeText::tr("Turn Off Awake") : AwakeText::tr("Keep Awake"),
             &AwakeMenuBar::toggleAwake));
    menu.items.append(MenuItem::separator());

    MenuItem heading;
    heading.title = AwakeText::tr("Keep awake for…");
    heading.enabled = false;
    menu.items.append(heading);

    const bool isAwake = controller.isAwake.get();
    const AwakeDuration defaultDuration = controller.settings()->defaultDuration.get();
    for (const AwakeDuration duration : allCases<AwakeDuration>()) {
        MenuItem choice;
        choice.title = title(duration);
        choice.representedObject = QString(rawValue(duration));
        choice.state = isAwake && duration == defaultDuration ? MenuItem::State::on : MenuItem::State::off;
        choice.action = [weak](const MenuItem& sender) {
            if (const auto self = weak.lock())
                (*self)->pickDuration(sender);
        };
        menu.items.append(choice);
    }

    menu.items.append(MenuItem::separator());
    menu.items.append(item(AwakeText::tr("Awake Settings…"), &AwakeMenuBar::openSettings));
    return menu;
}

void AwakeMenuBar::toggleAwake()
{
    if (const auto controller = m_controller.lock())
        controller->toggleDefault();
}

void AwakeMenuBar::pickDuration(const MenuItem& item)
{
    const auto controller = m_controller.lock();
    const auto* raw = std::any_cast<QString>(&item.representedObject);
    const auto duration = raw ? fromRawValue<AwakeDuration>(*raw) : std::nullopt;
    if (!controller || !duration)
        return;
    controller->settings()->defaultDuration.set(*duration);
    controller->activate(*duration);
}

void AwakeMenuBar::openSettings()
{
    platform().defaultNotificationCenter.post(OrvaNotifications::openHome);
}

} // namespace orvane
