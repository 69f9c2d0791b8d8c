#include "KeyboardShortcuts/Recorder/RecorderRecordingView.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Recorder/RecorderDecision.h"
#include "KeyboardShortcuts/Registration/State.h"

namespace orvane::KeyboardShortcuts {

RecorderRecording::RecorderRecording(QWidget& control, EventMonitors::Handler handler,
                                     HotKeyHandler hotKeyPressed)
    : m_pause(std::move(hotKeyPressed)),
      m_control(control),
      m_eventMonitor(recorderEvents, std::move(handler))
{
    pointerEnteredWindow();
    m_eventMonitor.start();
}

RecorderRecording::Pause::Pause(HotKeyHandler hotKeyPressed)
{
    setPaused(true);
    state().pausedHotKey = std::move(hotKeyPressed);
}

RecorderRecording::Pause::~Pause()
{
    state().pausedHotKey = {};
    setPaused(false);
}

void RecorderRecording::pointerEnteredWindow()
{
    if (!m_grab)
        m_grab = std::make_unique<KeyboardGrab>(m_control);
}

} // namespace orvane::KeyboardShortcuts
