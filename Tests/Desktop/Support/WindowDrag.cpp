#include "Desktop/Support/WindowDrag.h"

#include "Support/Eventually.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace orvane::tests {

namespace {

/// One step of the pointer's way, in pixels.
constexpr int stride = 25;
/// The time between two steps of a fling.
constexpr std::chrono::milliseconds stepTime = 4ms;

QPoint stepTowards(QPoint from, QPoint target)
{
    const QPoint way = target - from;
    const int length = std::max(std::abs(way.x()), std::abs(way.y()));
    return length <= stride ? target : from + way * stride / length;
}

} // namespace

WindowDrag::WindowDrag(Hardware& hardware, const Windows& windows, WindowId window,
                       std::function<void()> settled)
    : m_hardware(hardware), m_windows(windows), m_window(window), m_settled(std::move(settled))
{
}

WindowDrag::~WindowDrag()
{
    release();
}

QPoint WindowDrag::handle(const Windows& windows, WindowId window)
{
    const QRect frame = windows.frame(window);
    const int bar = windows.decorations(window).top();
    constexpr int middleOfHeaderBar = 18;
    return {frame.center().x(), frame.top() + (bar > 0 ? bar / 2 : middleOfHeaderBar)};
}

bool WindowDrag::begin(QPoint place)
{
    movePointer(place);
    m_hardware.press(Button::left);
    m_held = true;
    const bool isActive = eventually(5s, [&] { return m_windows.active() == m_window; });
    m_settled(); // a person rests for a moment before the move
    return isActive;
}

bool WindowDrag::moveTo(QPoint target)
{
    const QRect before = m_windows.frame(m_window);
    if (!m_moves) {
        // The step is shorter than any window manager takes for a drag: the window still stands when this is
        // seen.
        movePointer(m_pointer + QPoint(target.x() < m_pointer.x() ? -1 : 1, 0));
        m_settled();
    }
    while (m_pointer != target) {
        movePointer(stepTowards(m_pointer, target));
        if (!m_moves)
            m_moves = eventually(500ms, [&] { return m_windows.frame(m_window) != before; });
    }
    m_settled();
    return m_moves;
}

QElapsedTimer WindowDrag::fling(QPoint target, const Fling& fling)
{
    const QPoint from = handle(m_windows, m_window);
    movePointer(from);
    m_hardware.press(Button::left);
    m_held = true;
    fling.pressed();

    // The pace is that of the hand, and no wait for anything. A hand makes all its steps, also when this
    // process is late: a window manager spends the first ones on telling a drag from a click.
    QElapsedTimer clock;
    clock.start();
    qint64 nextStep = 0;
    QElapsedTimer sinceRelease;
    const qint64 steps = fling.time / stepTime;
    qint64 step = 0;
    QTimer pace;
    pace.setTimerType(Qt::PreciseTimer);
    QEventLoop loop;
    QObject::connect(&pace, &QTimer::timeout, &loop, [&] {
        if (!m_held) {
            if (clock.elapsed() < nextStep)
                return; // the timer was late before
            if (fling.goesOnTo)
                movePointer(*fling.goesOnTo);
            return loop.quit();
        }
        while (step < std::min<qint64>(steps, clock.elapsed() / stepTime.count())) {
            ++step;
            movePointer((QPointF(from) + QPointF(target - from) * double(step) / double(steps)).toPoint());
        }
        if (step < steps)
            return;
        sinceRelease.start();
        release();
        nextStep = clock.elapsed() + stepTime.count();
    });
    pace.start(stepTime);
    loop.exec();
    return sinceRelease;
}

void WindowDrag::movePointer(QPoint place)
{
    m_hardware.movePointer(place);
    m_pointer = place;
}

void WindowDrag::release()
{
    if (m_held)
        m_hardware.release(Button::left);
    m_held = false;
}

} // namespace orvane::tests
