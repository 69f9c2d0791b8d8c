// The Linux layer's monitors on the private desktop, with a window of this process that has the focus.
#pragma once

#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/WindowManager.h"
#include "Fakes/FakeLogSink.h"
#include "Platform/NotificationCenter.h"
#include "PlatformLinux/EventMonitors/X11EventMonitors.h"
#include "PlatformLinux/EventTap/XInputEventTaps.h"
#include "PlatformLinux/Menus/MenuTracking.h"
#include "PlatformLinux/Screens/X11Screens.h"
#include "Support/Eventually.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStringList>
#include <QVBoxLayout>
#include <QWindow>

#include <gmock/gmock.h>

namespace orvane::tests {

/// Records the key and mouse events that arrive in it.
class NotingEdit : public QLineEdit {
public:
    QStringList noted;

private:
    bool event(QEvent* event) override
    {
        const auto note = [&](const char* what) { noted.append(QString::fromLatin1(what)); };
        const bool repeats = (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) &&
                             static_cast<QKeyEvent*>(event)->isAutoRepeat();
        if (event->type() == QEvent::KeyPress && !repeats)
            note("down");
        else if (event->type() == QEvent::KeyRelease && !repeats)
            note("up");
        else if (event->type() == QEvent::MouseButtonPress)
            noted.append(u"mouse down %1"_qs.arg(static_cast<QMouseEvent*>(event)->pos().x()));
        else if (event->type() == QEvent::MouseButtonRelease)
            noted.append(u"mouse up %1"_qs.arg(static_cast<QMouseEvent*>(event)->pos().x()));
        return QLineEdit::event(event);
    }
};

/// Has the focus from the start.
class NotingWindow : public QWidget {
public:
    NotingWindow()
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&edit);
        resize(400, 200);
        EXPECT_TRUE(settleWindowManager());
        show();
        raise();
        activateWindow();
        edit.setFocus();
        EXPECT_TRUE(
            eventually(std::chrono::seconds(10), [this] { return edit.hasFocus() && isActiveWindow(); }));
        holdFocus(static_cast<std::uint32_t>(winId()));
    }

    NotingEdit edit;
};

class EventMonitorsFixture : public ::testing::Test {
protected:
    using Disposition = EventMonitors::Disposition;
    using MonitoredEvent = EventMonitors::MonitoredEvent;

    ~EventMonitorsFixture() override
    {
        // Keys of one test must not be down in the next one.
        EXPECT_TRUE(eventually(deadline, [this] { return other.keysDown().isEmpty(); }));
    }

    static constexpr auto deadline = std::chrono::seconds(10);

    FakeLogSink log;
    NotificationCenter center;
    MenuTracking menus{center};
    XInputEventTaps taps{log, [] { return CommandKeys::control; }};
    X11Screens screens{center};
    X11EventMonitors monitors{taps, menus, screens};
    OtherClient other;
    Hardware hardware;
};

constexpr EventMask keyEvents = eventMaskBit(EventType::keyDown) | eventMaskBit(EventType::keyUp);

} // namespace orvane::tests
