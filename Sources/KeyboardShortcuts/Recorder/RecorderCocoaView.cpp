#include "KeyboardShortcuts/Recorder/RecorderCocoaView.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/KeyboardShortcutsText.h"
#include "KeyboardShortcuts/Recorder/RecorderAccessibleView.h"
#include "KeyboardShortcuts/Recorder/RecorderAlertPanel.h"
#include "KeyboardShortcuts/Recorder/RecorderDecision.h"
#include "KeyboardShortcuts/Recorder/RecorderRecordingView.h"
#include "KeyboardShortcuts/Recorder/RecorderSpeech.h"
#include "Platform/InputSources.h"
#include "Platform/Platform.h"
#include "Platform/RunLoop.h"
#include "Platform/Sound.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPointer>

namespace orvane::KeyboardShortcuts {

namespace {

using Deed = RecorderDecision::Deed;
using Disposition = EventMonitors::Disposition;

/// True for focus that comes back with the window or from a closed menu: the user didn't choose the control.
bool isAutomatic(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

} // namespace

RecorderCocoa::RecorderCocoa(Name name, RecorderChange onChange, const QString& accessibleName)
    : RecorderField({KeyboardShortcutsText::tr("Record shortcut"), KeyboardShortcutsText::tr("Press keys…")}),
      m_shortcutName(std::move(name)),
      m_onChange(std::move(onChange))
{
    describeRecorders();
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(accessibleName.isEmpty() ? KeyboardShortcutsText::tr("Shortcut") : accessibleName);
    refreshStringValue();
    connect(&cancelButton(), &QAbstractButton::clicked, this, [this] {
        setStringValue(std::nullopt);
        controlTextDidChange();
    });
    NotificationCenter& center = platform().defaultNotificationCenter;
    m_shortcutsNameChangeObserver =
        center.addObserver(shortcutByNameDidChangeNotification(), [this](const Notification& change) {
            if (changedName(change) == m_shortcutName)
                refreshStringValue();
        });
    m_layoutChangeObserver =
        center.addObserver(InputSources::selectedKeyboardInputSourceChangedNotification(),
                           [this](const Notification&) { refreshStringValue(); });
}

RecorderCocoa::~RecorderCocoa()
{
    // These use the whole control, so they end first.
    m_recording.reset();
    m_heldKey.reset();
}

void RecorderCocoa::setShortcutName(const Name& name)
{
    m_shortcutName = name;
    refreshStringValue();
}

// Value

void RecorderCocoa::refreshStringValue()
{
    setStringValue(getShortcut(m_shortcutName));
}

void RecorderCocoa::setStringValue(const std::optional<Shortcut>& shortcut)
{
    m_spokenShortcut = shortcut ? spokenDescription(*shortcut) : QString();
    setText(shortcut ? shortcut->description() : QString());
    announceValue();
}

void RecorderCocoa::controlTextDidChange()
{
    const QPointer<RecorderCocoa> alive(this);
    if (stringValue().isEmpty()) {
        setShortcut(std::nullopt, Name(m_shortcutName));
        if (alive) {
            if (const RecorderChange changed = m_onChange)
                changed(std::nullopt);
        }
    }
    if (!alive)
        return;
    if (stringValue().isEmpty())
        makeFirstResponder();
}

QString RecorderCocoa::spokenValue() const
{
    return isRecording() || m_spokenShortcut.isEmpty() ? placeholder() : m_spokenShortcut;
}

void RecorderCocoa::announceValue()
{
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
}

// Recording

void RecorderCocoa::makeFirstResponder()
{
    if (!isVisible() || m_recording)
        return;
    m_wantsFocus = true;
    if (!isActiveWindow())
        window()->activateWindow();
    setFocus(Qt::OtherFocusReason);
}

void RecorderCocoa::becomeFirstResponder()
{
    m_wantsFocus = false;
    if (m_recording)
        return;
    m_heldKey.reset();
    m_recording = std::make_unique<RecorderRecording>(
        *this, [this](const EventMonitors::MonitoredEvent& event) { return handle(event); },
        [this](const Shortcut& shortcut) { hotKeyPressed(shortcut); });
    window()->installEventFilter(this);
    setPlaceholder(KeyboardShortcutsText::tr("Press keys…"));
    setHighlight(Highlight::ring);
    announceValue();
}

void RecorderCocoa::endRecording()
{
    if (!m_recording)
        return;
    m_recording.reset();
    setPlaceholder(KeyboardShortcutsText::tr("Record shortcut"));
    setHighlight(Highlight::none);
    announceValue();
}

void RecorderCocoa::blur()
{
    if (QWidget* responder = window()->focusWidget())
        responder->clearFocus();
    endRecording();
    window()->installEventFilter(this);
}

Disposition RecorderCocoa::handle(const EventMonitors::MonitoredEvent& event)
{
    const RecorderDecision decision = decide(event, RecorderSurroundings::of(boundsOnScreens()));
    const bool isMouseUp = event.event.type != EventType::keyDown;
    switch (decision.deed) {
    case Deed::leave:
        blur();
        return Disposition::pass;
    case Deed::ignore:
        // The control hides a mouse button's release from other code. The toolkit has to see it: until then
        // it sends all mouse events to what was pressed.
        return isMouseUp ? Disposition::pass : Disposition::swallow;
    case Deed::cancel:
        keepUntilLetGo(event.event.keycode);
        blur();
        break;
    case Deed::clear:
        if (!cancelButton().isHidden())
            cancelButton().click();
        break;
    case Deed::refuse:
        platform().sound.beep();
        break;
    case Deed::refuseForMenuItem:
        keepUntilLetGo(event.event.keycode);
        alert(KeyboardShortcutsText::tr("The menu item “%1” already has this shortcut.")
                  .arg(decision.menuItemTitle),
              {});
        break;
    case Deed::refuseForSystem:
        keepUntilLetGo(event.event.keycode);
        alert(KeyboardShortcutsText::tr("The desktop already uses this shortcut."),
              KeyboardShortcutsText::tr(
                  "Choose another one here, or change the desktop’s in its keyboard settings."));
        break;
    case Deed::accept:
        keepUntilLetGo(event.event.keycode);
        accept(*decision.shortcut);
        break;
    }
    return Disposition::swallow;
}

void RecorderCocoa::hotKeyPressed(const Shortcut& shortcut)
{
    // Held, the keyboard brings every key here as it is typed.
    if (m_recording->holdsKeyboard())
        return;
    EventMonitors::MonitoredEvent pressed;
    pressed.event.type = EventType::keyDown;
    pressed.event.keycode = shortcut.carbonKeyCode;
    pressed.event.flags = shortcut.modifiers();
    const QPointer<RecorderCocoa> alive(this);
    (void)handle(pressed);
    if (alive)
        m_heldKey.reset(); // the system keeps the repeats and the release of a hot key
}

void RecorderCocoa::keepUntilLetGo(std::int64_t keycode)
{
    m_heldKey = std::make_unique<RecorderHeldKey>(keycode, m_recording->takeGrab());
}

void RecorderCocoa::accept(const Shortcut& shortcut)
{
    // A callback may end this control.
    const QPointer<RecorderCocoa> alive(this);
    setStringValue(shortcut);
    userDefaultsSet(Name(m_shortcutName), shortcut);
    if (alive) {
        if (const RecorderChange changed = m_onChange)
            changed(shortcut);
    }
    if (alive)
        blur();
}

void RecorderCocoa::alert(const QString& message, const QString& informativeText)
{
    blur();
    auto* panel = new RecorderAlertPanel(message, informativeText, window());
    connect(panel, &QDialog::finished, this, &RecorderCocoa::makeFirstResponder);
    panel->open();
}

// Window and focus

void RecorderCocoa::preventBecomingKey()
{
    m_canBecomeKey = false;
    setFocusPolicy(Qt::ClickFocus);
    platform().mainRunLoop.perform([self = QPointer(this)] {
        if (!self)
            return;
        self->m_canBecomeKey = true;
        self->setFocusPolicy(Qt::StrongFocus);
    });
}

void RecorderCocoa::windowDidBecomeKey()
{
    if (m_wantsFocus)
        setFocus(Qt::OtherFocusReason);
    else
        preventBecomingKey();
}

void RecorderCocoa::windowDidResignKey()
{
    m_wantsFocus = false;
    if (m_recording)
        blur();
}

bool RecorderCocoa::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride: // no menu and no button may take a key that is being recorded
        if (m_recording) {
            event->accept();
            return true;
        }
        break;
    case QEvent::WindowActivate:
        windowDidBecomeKey();
        break;
    case QEvent::WindowDeactivate:
        windowDidResignKey();
        break;
    default:
        break;
    }
    return RecorderField::event(event);
}

void RecorderCocoa::showEvent(QShowEvent* event)
{
    RecorderField::showEvent(event);
    if (!event->spontaneous())
        preventBecomingKey();
}

void RecorderCocoa::hideEvent(QHideEvent* event)
{
    m_wantsFocus = false;
    m_heldKey.reset();
    if (m_recording)
        blur();
    RecorderField::hideEvent(event);
}

void RecorderCocoa::focusInEvent(QFocusEvent* event)
{
    RecorderField::focusInEvent(event);
    if (m_handsFocusOn)
        return;
    const bool isInitialChoice = !m_canBecomeKey && event->reason() == Qt::OtherFocusReason;
    if (m_wantsFocus || !(isInitialChoice || isAutomatic(event->reason())))
        becomeFirstResponder();
    else
        blur();
}

void RecorderCocoa::focusOutEvent(QFocusEvent* event)
{
    endRecording();
    RecorderField::focusOutEvent(event);
}

void RecorderCocoa::mousePressEvent(QMouseEvent*)
{
    if (!m_recording)
        makeFirstResponder();
}

// A click on the control ends here: neither half of it goes on to what is under the control.
void RecorderCocoa::mouseReleaseEvent(QMouseEvent*) {}

bool RecorderCocoa::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != window())
        return RecorderField::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Leave:
        if (m_recording)
            m_recording->pointerLeftWindow();
        break;
    case QEvent::Enter:
        if (m_recording)
            m_recording->pointerEnteredWindow();
        break;
    case QEvent::KeyPress:
        return windowTakesTab(static_cast<const QKeyEvent&>(*event));
    default:
        break;
    }
    return RecorderField::eventFilter(watched, event);
}

/// In a window where nothing has the focus, Tab would begin at the first control.
bool RecorderCocoa::windowTakesTab(const QKeyEvent& press)
{
    const bool isTab = press.key() == Qt::Key_Tab || press.key() == Qt::Key_Backtab;
    if (!isTab || (press.modifiers() & ~Qt::ShiftModifier) || !isVisible() || window()->focusWidget())
        return false;
    tabOnFromHere(press.key() == Qt::Key_Tab && !(press.modifiers() & Qt::ShiftModifier));
    return true;
}

bool RecorderCocoa::focusNextPrevChild(bool next)
{
    return hasFocus() ? RecorderField::focusNextPrevChild(next) : tabOnFromHere(next);
}

bool RecorderCocoa::tabOnFromHere(bool next)
{
    window()->removeEventFilter(this);
    m_handsFocusOn = true;
    setFocus(Qt::OtherFocusReason);
    const bool moved = RecorderField::focusNextPrevChild(next);
    m_handsFocusOn = false;
    if (hasFocus())
        clearFocus();
    return moved;
}

QRectF RecorderCocoa::boundsOnScreens() const
{
    const QRectF box = shape();
    return QRectF(mapToGlobal(box.topLeft()), box.size());
}

} // namespace orvane::KeyboardShortcuts
