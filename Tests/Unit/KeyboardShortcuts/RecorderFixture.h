// A window with recorders on the platform of fakes, and the events that their monitors see.
#pragma once

#include "KeyboardShortcuts/Recorder/RecorderAlertPanel.h"
#include "KeyboardShortcuts/Recorder/RecorderCocoaView.h"
#include "Unit/KeyboardShortcuts/ShortcutsFixture.h"
#include "Unit/OrvaneKit/OrvaWidgetSupport.h"

#include <QAbstractButton>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane::tests {

class RecorderFixture : public ShortcutsFixture {
protected:
    using Key = KeyboardShortcuts::Key;
    using RecorderCocoa = KeyboardShortcuts::RecorderCocoa;
    using RecorderAlertPanel = KeyboardShortcuts::RecorderAlertPanel;
    using Disposition = EventMonitors::Disposition;
    using Changes = std::vector<std::optional<Shortcut>>;

    RecorderFixture() { window.resize(400, 300); }

    RecorderCocoa* addRecorder(const char* name)
    {
        auto* recorder = new RecorderCocoa(
            named(name), [this](const std::optional<Shortcut>& shortcut) { changes.push_back(shortcut); });
        lines->addWidget(recorder);
        return recorder;
    }
    /// Adds a control that takes the focus by Tab and by click, as a recorder does.
    QAbstractButton* addButton(const char* name)
    {
        auto* button = new QPushButton(QString::fromUtf8(name));
        button->setFocusPolicy(Qt::StrongFocus);
        lines->addWidget(button);
        return button;
    }

    /// Shows the window and runs one turn of the main queue.
    void open()
    {
        showActive(window);
        QCoreApplication::processEvents(); // shows what was added to a visible window
        fake.runLoop.drain();
    }
    void record(RecorderCocoa* recorder)
    {
        recorder->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(recorder->isRecording());
    }

    /// Presses and releases a key; returns what was done with the press.
    Disposition keyDown(Key code, EventFlags flags = 0)
    {
        const Disposition disposition = holdKey(code, flags);
        letGo(code, flags);
        return disposition;
    }
    Disposition holdKey(Key code, EventFlags flags = 0) { return send(EventType::keyDown, flags, code); }
    Disposition letGo(Key code, EventFlags flags = 0) { return send(EventType::keyUp, flags, code); }
    /// Repeats a held key, as the keyboard does.
    Disposition repeat(Key code, EventFlags flags = 0)
    {
        return send(EventType::keyDown, flags, code, {}, 1);
    }
    /// Releases a mouse button at a place of the control's box.
    Disposition mouseUp(const RecorderCocoa* recorder, const QPointF& at,
                        EventType type = EventType::leftMouseUp)
    {
        return send(type, 0, Key::a, recorder->mapToGlobal(at + QPointF(orvaRingMargin, orvaRingMargin)));
    }

    [[nodiscard]] RecorderAlertPanel* alert() const { return window.findChild<RecorderAlertPanel*>(); }
    [[nodiscard]] QAbstractButton* cancelButton(RecorderCocoa* recorder) const
    {
        return recorder->findChild<QAbstractButton*>();
    }
    void addMenuItem(const char* title, const char* keyEquivalent, EventFlags mask = eventFlag::command)
    {
        if (!fake.application.menu)
            fake.application.menu = std::make_shared<Menu>();
        MenuItem item;
        item.title = QString::fromUtf8(title);
        item.keyEquivalent = QString::fromUtf8(keyEquivalent);
        item.keyEquivalentModifierMask = mask;
        fake.application.menu->items.append(item);
    }
    /// True if no recorder records, no event is watched and every shortcut fires.
    [[nodiscard]] bool isQuiet() const
    {
        return !KeyboardShortcuts::isPaused() && fake.eventMonitors.localCount() == 0;
    }

    QWidget window;
    QVBoxLayout* lines = new QVBoxLayout(&window);
    Changes changes;

private:
    Disposition send(EventType type, EventFlags flags, Key code, const QPointF& at = {},
                     std::int64_t autorepeat = 0)
    {
        EventMonitors::MonitoredEvent monitored;
        monitored.event.type = type;
        monitored.event.flags = flags;
        monitored.event.keycode = rawValue(code);
        monitored.event.autorepeat = autorepeat;
        monitored.location = at;
        return fake.eventMonitors.sendToWindow(monitored);
    }
};

} // namespace orvane::tests
