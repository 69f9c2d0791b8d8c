#include "PlatformLinux/Overlays/X11InputHold.h"

#include <QWindow>

#include <utility>

namespace orvane {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 500ms;
constexpr auto lookInterval = 5ms;

} // namespace

X11InputHold::X11InputHold(std::shared_ptr<InputGrabs> grabs, std::function<void()> letKeyboardGo,
                           std::function<void(bool)> answer)
    : m_grabs(std::move(grabs)),
      m_letKeyboardGo(std::move(letKeyboardGo)),
      m_answer(std::move(answer)),
      m_deadline(std::chrono::steady_clock::now() + patience)
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
    if (m_grabs)
        ask();
    m_timer.start(m_grabs ? lookInterval : 0ms);
}

X11InputHold::~X11InputHold()
{
    if (m_isHeld)
        m_grabs->letGoWhenReleased();
    else if (m_grabs && m_answer)
        m_grabs->letGo();
}

void X11InputHold::ask()
{
    m_letKeyboardGo();
    m_grabs->askForRoot();
}

void X11InputHold::look()
{
    const auto state = m_grabs ? m_grabs->look() : InputGrabs::State::refused;
    if (state == InputGrabs::State::granted) {
        m_isHeld = true;
        tell(true);
    } else if (!m_grabs) {
        tell(false);
    } else if (std::chrono::steady_clock::now() >= m_deadline) {
        m_grabs->letGo();
        tell(false);
    } else if (state == InputGrabs::State::refused) {
        m_grabs->letGo(); // one of the two may be there
        ask();
    }
}

void X11InputHold::tell(bool isHeld)
{
    m_timer.stop();
    if (!isHeld)
        m_life.reset();
    if (const auto answer = std::exchange(m_answer, nullptr))
        answer(isHeld); // may end this object
}

void X11InputHold::deliverTo(QWindow& window)
{
    if (!m_isHeld)
        return;
    m_grabs->ask(static_cast<xcb_window_t>(window.winId()));
    m_grabs->forget();
}

} // namespace orvane
