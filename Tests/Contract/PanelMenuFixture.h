// A status item of this process in the panel of the private desktop, which draws its menu, and what is posted
// about menus.
#pragma once

#include "Contract/EventMonitorsFixture.h"
#include "Contract/EventTapSupport.h"
#include "Desktop/Support/Bus.h"
#include "Desktop/Support/Screen.h"
#include "Platform/Menu.h"
#include "PlatformLinux/Tray/LinuxStatusBar.h"

#include <QPainter>

#include <utility>

namespace orvane::tests {

class MenuTrackingTest : public EventMonitorsFixture {
protected:
    MenuTrackingTest()
    {
        begin = center.addObserver(Menu::didBeginTrackingNotification(),
                                   [this](const Notification&) { posted.append(QStringLiteral("begin")); });
        end = center.addObserver(Menu::didEndTrackingNotification(),
                                 [this](const Notification&) { posted.append(QStringLiteral("end")); });
    }

    bool hasPosted(const QStringList& all)
    {
        return eventually(deadline, [&] { return posted.size() >= all.size(); }) && posted == all;
    }

    const QString began = QStringLiteral("begin");
    const QString ended = QStringLiteral("end");
    QStringList posted;
    std::unique_ptr<NotificationCenter::Token> begin;
    std::unique_ptr<NotificationCenter::Token> end;
};

inline MenuItem choice(
    const QString& title, MenuItem::Action action = [](const MenuItem&) {})
{
    MenuItem item;
    item.title = title;
    item.action = std::move(action);
    return item;
}

/// A status item of this process in the real panel, which draws its menu.
class PanelMenuTest : public MenuTrackingTest {
protected:
    PanelMenuTest()
    {
        item->setAutosaveName(QStringLiteral("net.lindenrow.orvane.test"));
        TemplateImage dot;
        dot.size = QSizeF(18, 18);
        dot.draw = [](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, Qt::black); };
        item->setImage(dot);
        item->setMenu([this] {
            ++timesAsked;
            const auto note = [this](const MenuItem& sender) { chosen.append(sender.title); };
            MenuItem more;
            more.title = QStringLiteral("More");
            more.submenu = std::make_shared<Menu>(Menu{{}, {choice(QStringLiteral("Inner"), note)}});
            return Menu{{}, {choice(QStringLiteral("One"), note), choice(QStringLiteral("Two"), note), more}};
        });
        EXPECT_TRUE(eventually(deadline, [this] { return timesAsked > 0 && isDrawn(); }));
    }

    ~PanelMenuTest() override
    {
        item.reset();
        EXPECT_TRUE(eventually(deadline, [] { return service().isEmpty(); }));
    }

    /// Returns where this process's item is registered; empty while it isn't. The item itself isn't asked,
    /// since it couldn't answer.
    static QString service()
    {
        const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
        const QStringList all = property(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher,
                                         QStringLiteral("RegisteredStatusNotifierItems"))
                                    .toStringList();
        const QString own =
            QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(QCoreApplication::applicationPid());
        for (const QString& name : all) {
            if (name.startsWith(own))
                return name.section(u'/', 0, 0);
        }
        return {};
    }

    /// Returns the item's place in the panel, where it is the only one.
    [[nodiscard]] std::optional<QRect> place() const
    {
        if (service().isEmpty())
            return std::nullopt;
        const qint64 panel = processOnSessionBus(QStringLiteral("org.kde.StatusNotifierWatcher"));
        for (const ScreenWindow& window : screen.windowsOf(panel)) {
            const bool isArea = window.type != WindowType::menu && window.parent != screen.root();
            if (isArea && std::abs(window.geometry.width() - window.geometry.height()) <= 2)
                return window.geometry;
        }
        return std::nullopt;
    }

    [[nodiscard]] bool isDrawn() const
    {
        const auto at = place();
        const QImage picture = at ? screen.picture(*at) : QImage();
        return !picture.isNull() && picture.pixel(picture.rect().center()) != picture.pixel(0, 0);
    }

    /// A click on an item that the panel is still setting up is lost; then it clicks once more.
    bool openByClick()
    {
        const qsizetype before = posted.size();
        for (int clicks = 0; clicks < 5 && posted.size() == before; ++clicks) {
            const auto at = place();
            if (at)
                hardware.click(at->center());
            (void)eventually(2s, [&] { return posted.size() != before; });
        }
        return posted.size() == before + 1 && menus.place() == MenuTracking::Place::desktop;
    }

    /// True once the monitors' tap has the keyboard. On a busy machine it gets it some time after the menu
    /// opens.
    bool hasTheKeyboard()
    {
        return monitors.isTapping() &&
               eventually(deadline, [] { return OtherClient().isFloating("testkbd"); });
    }

    /// Adds a monitor that takes the letter C and records what it saw.
    std::unique_ptr<EventMonitor> takeC()
    {
        return monitors.addMenuTrackingMonitor(keyEvents, [this](const MonitoredEvent& event) {
            seen.push_back(event.event);
            return event.event.keycode == 8 ? Disposition::swallow : Disposition::pass;
        });
    }

    LinuxStatusBar bar{log, center, &menus};
    std::unique_ptr<StatusItem> item = bar.makeStatusItem(StatusItem::squareLength);
    Screen screen;
    int timesAsked = 0;
    QStringList chosen;
    std::vector<Event> seen;
};

} // namespace orvane::tests
