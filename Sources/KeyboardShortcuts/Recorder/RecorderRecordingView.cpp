#include "KeyboardShortcuts/Recorder/RecorderRecordingView.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/Recorder/RecorderDecision.h"

namespace orvane::KeyboardShortcuts {

RecorderRecording::RecorderRecording(QWidget& control, EventMonitors::Handler handler)
    : m_control(control), m_eventMonitor(recorderEvents, std::move(handler))
{
    pointerEnteredWindow();
    m_eventMonitor.start();
}

RecorderRecording::Pause::Pause()
{
    setPaused(true);
}

RecorderRecording::Pause::~Pause()
{
    setPaused(false);
}

void RecorderRecording::pointerEnteredWindow()
{
    if (!m_grab)
        m_grab = std::make_unique<KeyboardGrab>(m_control);
}

} // namespace orvane::KeyboardShortcuts
