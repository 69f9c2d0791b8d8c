#include "PlatformLinux/Accessibility/AXAttributes.h"

#include "PlatformLinux/Accessibility/AXElements.h"
#include "PlatformLinux/Applications/DesktopEntries.h"
#include "PlatformLinux/Screens/ScreenSpace.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

namespace orvane {

namespace {

struct Name {
    QLatin1StringView text;
    AXAttribute attribute;
};

constexpr std::array names{
    Name{QLatin1StringView("AXPosition"), AXAttribute::position},
    Name{QLatin1StringView("AXSize"), AXAttribute::size},
    Name{QLatin1StringView("AXFocusedApplication"), AXAttribute::focusedApplication},
    Name{QLatin1StringView("AXFocusedWindow"), AXAttribute::focusedWindow},
    Name{QLatin1StringView("AXFullScreen"), AXAttribute::fullScreen},
    Name{QLatin1StringView("AXChildren"), AXAttribute::children},
    Name{QLatin1StringView("AXCloseButton"), AXAttribute::closeButton},
    Name{QLatin1StringView("AXFocused"), AXAttribute::focused},
    Name{QLatin1StringView("AXMain"), AXAttribute::main},
    Name{QLatin1StringView("AXMainWindow"), AXAttribute::mainWindow},
    Name{QLatin1StringView("AXMinimized"), AXAttribute::minimized},
    Name{QLatin1StringView("AXParent"), AXAttribute::parent},
    Name{QLatin1StringView("AXRole"), AXAttribute::role},
    Name{QLatin1StringView("AXTitle"), AXAttribute::title},
    Name{QLatin1StringView("AXWindows"), AXAttribute::windows},
    Name{QLatin1StringView("AXZoomButton"), AXAttribute::zoomButton},
};

AXUIElement windowElement(xcb_window_t window)
{
    return AXBody::ofWindow(AXBody::Kind::window, window);
}

bool isRunning(const ProgramId& program)
{
    if (program.process <= 0)
        return program.client != 0;
    return ::kill(static_cast<pid_t>(program.process), 0) == 0 || errno != ESRCH;
}

} // namespace

std::optional<AXAttribute> axAttribute(const QString& name)
{
    const auto* const found = std::ranges::find(names, name, &Name::text);
    return found == names.end() ? std::nullopt : std::optional(found->attribute);
}

Accessibility::Copied AXAttributes::copy(const AXBody& body, AXAttribute attribute)
{
    switch (body.kind) {
    case AXBody::Kind::systemWide:
        return ofSystemWide(attribute);
    case AXBody::Kind::application:
        return isRunning(body.program) ? ofApplication(body.program, attribute)
                                       : Copied{AXError::invalidUIElement};
    case AXBody::Kind::window:
        return ofWindow(body.window, attribute);
    case AXBody::Kind::closeButton:
    case AXBody::Kind::zoomButton:
        return ofButton(body, attribute);
    }
    return {AXError::failure};
}

Accessibility::Copied AXAttributes::given(const AXValue& value) const
{
    return m_exchange.isLate() ? Copied{AXError::cannotComplete} : Copied{AXError::success, value};
}

Accessibility::Copied AXAttributes::nothing() const
{
    return {m_exchange.isLate() ? AXError::cannotComplete : AXError::noValue};
}

Accessibility::Copied AXAttributes::gone() const
{
    return {m_exchange.isLate() ? AXError::cannotComplete : AXError::invalidUIElement};
}

Accessibility::Copied AXAttributes::ofSystemWide(AXAttribute attribute)
{
    switch (attribute) {
    case AXAttribute::role:
        return given(QStringLiteral("AXSystemWide"));
    case AXAttribute::focusedApplication: {
        const auto active = m_reader.activeWindow(m_exchange);
        return active ? given(AXBody::application(active->program)) : nothing();
    }
    default:
        return {AXError::attributeUnsupported};
    }
}

Accessibility::Copied AXAttributes::ofApplication(const ProgramId& program, AXAttribute attribute)
{
    switch (attribute) {
    case AXAttribute::role:
        return given(QStringLiteral("AXApplication"));
    case AXAttribute::title:
        return applicationTitle(program);
    case AXAttribute::focusedWindow:
    case AXAttribute::mainWindow: {
        const auto window = mainWindow(program);
        return window ? given(windowElement(*window)) : nothing();
    }
    case AXAttribute::windows:
    case AXAttribute::children: {
        QList<AXUIElement> elements;
        for (const xcb_window_t window : m_reader.windowsOf(m_exchange, program))
            elements.append(windowElement(window));
        return given(elements);
    }
    default:
        return {AXError::attributeUnsupported};
    }
}

std::optional<xcb_window_t> AXAttributes::mainWindow(const ProgramId& program)
{
    const auto active = m_reader.activeWindow(m_exchange);
    if (active && active->program == program)
        return active->isOrdinary ? std::optional(active->window) : std::nullopt;
    const auto windows = m_reader.windowsOf(m_exchange, program);
    return windows.empty() ? std::nullopt : std::optional(windows.front());
}

Accessibility::Copied AXAttributes::applicationTitle(const ProgramId& program)
{
    for (const xcb_window_t window : m_reader.windowsOf(m_exchange, program)) {
        const auto windowClass = m_reader.windowClass(m_exchange, window);
        if (!windowClass)
            continue;
        const auto entry = m_entries.entryForWindow(windowClass->name, windowClass->instance);
        const QString name = entry ? entry->name : windowClass->name;
        if (!name.isEmpty())
            return given(name);
    }
    return nothing();
}

Accessibility::Copied AXAttributes::ofWindow(xcb_window_t window, AXAttribute attribute)
{
    switch (attribute) {
    case AXAttribute::role:
        return m_reader.state(m_exchange, window) ? given(QStringLiteral("AXWindow")) : gone();
    case AXAttribute::title: {
        const auto title = m_reader.title(m_exchange, window);
        return title ? given(*title) : gone();
    }
    case AXAttribute::position:
    case AXAttribute::size:
        return windowFrame(window, attribute);
    case AXAttribute::minimized:
    case AXAttribute::fullScreen:
    case AXAttribute::focused:
    case AXAttribute::main:
        return windowState(window, attribute);
    case AXAttribute::parent: {
        const auto program = m_reader.programOf(m_exchange, window);
        return program ? given(AXBody::application(*program)) : gone();
    }
    case AXAttribute::closeButton:
    case AXAttribute::zoomButton:
    case AXAttribute::children:
        return windowButtons(window, attribute);
    default:
        return {AXError::attributeUnsupported};
    }
}

Accessibility::Copied AXAttributes::windowFrame(xcb_window_t window, AXAttribute part)
{
    const auto placed = m_reader.placed(m_exchange, window);
    if (!placed)
        return gone();
    const Rect frame = m_space.axFromNative(visibleFrame(placed->place).rect());
    return part == AXAttribute::position ? given(frame.origin) : given(frame.size);
}

Accessibility::Copied AXAttributes::windowState(xcb_window_t window, AXAttribute part)
{
    const auto state = m_reader.state(m_exchange, window);
    if (!state)
        return gone();
    switch (part) {
    case AXAttribute::minimized:
        return given(state->isMinimized);
    case AXAttribute::fullScreen:
        return given(state->isFullScreen);
    case AXAttribute::focused: {
        const auto active = m_reader.activeWindow(m_exchange);
        return given(active && active->window == window);
    }
    default: {
        const auto program = m_reader.programOf(m_exchange, window);
        return program ? given(mainWindow(*program) == window) : gone();
    }
    }
}

Accessibility::Copied AXAttributes::windowButtons(xcb_window_t window, AXAttribute which)
{
    const auto abilities = m_reader.abilities(m_exchange, window);
    if (!abilities)
        return gone();
    const AXUIElement close = AXBody::ofWindow(AXBody::Kind::closeButton, window);
    const AXUIElement zoom = AXBody::ofWindow(AXBody::Kind::zoomButton, window);
    if (which == AXAttribute::closeButton)
        return abilities->canClose ? given(close) : nothing();
    if (which == AXAttribute::zoomButton)
        return abilities->canMaximize ? given(zoom) : nothing();
    QList<AXUIElement> buttons;
    if (abilities->canClose)
        buttons.append(close);
    if (abilities->canMaximize)
        buttons.append(zoom);
    return given(buttons);
}

Accessibility::Copied AXAttributes::ofButton(const AXBody& button, AXAttribute attribute)
{
    switch (attribute) {
    case AXAttribute::role:
        return m_reader.state(m_exchange, button.window) ? given(QStringLiteral("AXButton")) : gone();
    case AXAttribute::parent:
        return m_reader.state(m_exchange, button.window) ? given(windowElement(button.window)) : gone();
    default:
        return {AXError::attributeUnsupported};
    }
}

} // namespace orvane
