// The control that shows the shortcut of a name and records another one while it has the focus. While it
// records, no shortcut of the program fires. Main thread.
#pragma once

#include "KeyboardShortcuts/Recorder/Recorder.h"
#include "KeyboardShortcuts/Recorder/RecorderFieldView.h"
#include "KeyboardShortcuts/Shortcut/Name.h"
#include "KeyboardShortcuts/Shortcut/Shortcut.h"
#include "Platform/EventMonitors.h"
#include "Platform/NotificationCenter.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace orvane::KeyboardShortcuts {

class RecorderHeldKey;
class RecorderRecording;

class RecorderCocoa final : public RecorderField {
    Q_OBJECT

public:
    /// Without an accessible name assistive technology calls it "Shortcut".
    explicit RecorderCocoa(Name name, RecorderChange onChange = {}, const QString& accessibleName = {});
    ~RecorderCocoa() override;

    [[nodiscard]] const Name& shortcutName() const { return m_shortcutName; }
    void setShortcutName(const Name& name);
    void setOnChange(RecorderChange onChange) { m_onChange = std::move(onChange); }

    /// Returns the shortcut in words; without one, and while recording, a hint what to do.
    [[nodiscard]] QString spokenValue() const;
    [[nodiscard]] bool isRecording() const { return m_recording != nullptr; }
    [[nodiscard]] bool canBecomeKeyView() const { return m_canBecomeKey; }

    /// Takes the focus, at once or as soon as its window is the active one, and records.
    void makeFirstResponder();

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void becomeFirstResponder();
    void endRecording();
    void blur();
    void preventBecomingKey();
    void windowDidBecomeKey();
    void windowDidResignKey();

    void refreshStringValue();
    void setStringValue(const std::optional<Shortcut>& shortcut);
    void controlTextDidChange();

    EventMonitors::Disposition handle(const EventMonitors::MonitoredEvent& event);
    void hotKeyPressed(const Shortcut& shortcut);
    /// Called before the key ends the recording.
    void keepUntilLetGo(std::int64_t keycode);
    void accept(const Shortcut& shortcut);
    void alert(const QString& message, const QString& informativeText);

    bool windowTakesTab(const QKeyEvent& press);
    bool tabOnFromHere(bool next);
    [[nodiscard]] QRectF boundsOnScreens() const;
    void announceValue();

    Name m_shortcutName;
    RecorderChange m_onChange;
    QString m_spokenShortcut;
    std::unique_ptr<RecorderRecording> m_recording;
    std::unique_ptr<RecorderHeldKey> m_heldKey;
    std::unique_ptr<NotificationCenter::Token> m_shortcutsNameChangeObserver;
    std::unique_ptr<NotificationCenter::Token> m_layoutChangeObserver;
    bool m_canBecomeKey = true;
    bool m_wantsFocus = false;   // records as soon as its window is active
    bool m_handsFocusOn = false; // has the focus only to pass it to the next control
};

} // namespace orvane::KeyboardShortcuts
