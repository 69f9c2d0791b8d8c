#include "Desktop/Support/ScreenSaver.h"

#include <stdexcept>

#include <X11/Xlib.h>
#include <X11/extensions/scrnsaver.h>

namespace orvane::tests {

struct ScreenSaver::Server {
    struct Closer {
        void operator()(Display* display) const { XCloseDisplay(display); }
    };
    std::unique_ptr<Display, Closer> display{XOpenDisplay(nullptr)};
    int timeout = 0, interval = 0, blanking = 0, exposures = 0; // as they were before

    [[nodiscard]] XScreenSaverInfo info() const
    {
        XScreenSaverInfo info{};
        if (!XScreenSaverQueryInfo(display.get(), DefaultRootWindow(display.get()), &info))
            throw std::runtime_error("The X server doesn't tell about its screen saver");
        return info;
    }
};

ScreenSaver::ScreenSaver() : m_server(std::make_unique<Server>())
{
    if (!m_server->display)
        throw std::runtime_error("There is no X display to open");
    static_cast<void>(m_server->info());
    XGetScreenSaver(m_server->display.get(), &m_server->timeout, &m_server->interval, &m_server->blanking,
                    &m_server->exposures);
}

ScreenSaver::~ScreenSaver()
{
    Display* display = m_server->display.get();
    XSetScreenSaver(display, m_server->timeout, m_server->interval, m_server->blanking, m_server->exposures);
    XForceScreenSaver(display, ScreenSaverReset);
    XSync(display, False);
}

void ScreenSaver::setTimeout(std::chrono::seconds timeout)
{
    XSetScreenSaver(m_server->display.get(), static_cast<int>(timeout.count()), 0, PreferBlanking,
                    AllowExposures);
    XSync(m_server->display.get(), False);
}

void ScreenSaver::reset()
{
    XForceScreenSaver(m_server->display.get(), ScreenSaverReset);
    XSync(m_server->display.get(), False);
}

ScreenSaver::State ScreenSaver::state() const
{
    switch (m_server->info().state) {
    case ScreenSaverOn:
        return State::on;
    case ScreenSaverDisabled:
        return State::disabled;
    default:
        return State::off;
    }
}

std::chrono::milliseconds ScreenSaver::idle() const
{
    return std::chrono::milliseconds(m_server->info().idle);
}

} // namespace orvane::tests
