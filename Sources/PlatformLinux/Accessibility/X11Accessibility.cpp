#include "PlatformLinux/Accessibility/X11Accessibility.h"

#include "Platform/Permissions.h"
#include "PlatformLinux/Accessibility/AXAttributes.h"
#include "PlatformLinux/Accessibility/AXElements.h"
#include "PlatformLinux/Accessibility/WindowPlacer.h"
#include "PlatformLinux/Screens/X11Screens.h"

#include <algorithm>

namespace orvane {

namespace {

/// Longer than any useful wait, and short enough to be added to any time.
constexpr std::chrono::duration<float> longestTimeout{600};

Deadline deadlineOf(const AXBody& body)
{
    using Clock = std::chrono::steady_clock;
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(body.timeout);
}

} // namespace

struct X11Accessibility::Session {
    Session(std::shared_ptr<ApplicationLink> link, const X11Screens& screens)
        : x(std::move(link)),
          placer(*x, reader, [&screens]() -> const ScreenSpace& { return screens.space(); })
    {
    }

    std::shared_ptr<ApplicationLink> x;
    WindowReader reader;
    WindowRequests requests{x->link()};
    WindowPlacer placer;
};

X11Accessibility::X11Accessibility(const X11Screens& screens, Permissions& permissions)
    : m_screens(screens), m_permissions(permissions)
{
}

X11Accessibility::~X11Accessibility() = default;

AXUIElement X11Accessibility::createSystemWide()
{
    return AXBody::systemWide();
}

AXUIElement X11Accessibility::createApplication(std::int64_t processIdentifier)
{
    return AXBody::application({.process = processIdentifier});
}

void X11Accessibility::setMessagingTimeout(const AXUIElement& element, std::chrono::duration<float> timeout)
{
    AXBody::of(element).timeout =
        timeout.count() > 0 ? std::min(timeout, longestTimeout) : AXBody::defaultTimeout;
}

/// Runs the work of one call in an exchange that ends by the element's time-out.
template <typename Work>
auto X11Accessibility::onCall(const AXUIElement& element, Work work)
    -> decltype(work(std::declval<Session&>(), std::declval<XExchange&>()))
{
    if (!m_permissions.axIsProcessTrusted())
        return {AXError::apiDisabled};
    const Deadline deadline = deadlineOf(AXBody::of(element));
    if (m_session && m_session->x->link().isLost())
        m_session.reset();
    if (!m_session) {
        auto x = ApplicationLink::get();
        if (!x)
            return {AXError::cannotComplete};
        m_session = std::make_unique<Session>(std::move(x), m_screens);
    }
    XExchange exchange(m_session->x->link(), deadline);
    return work(*m_session, exchange);
}

Accessibility::Copied X11Accessibility::copyAttributeValue(const AXUIElement& element,
                                                           const QString& attribute)
{
    return onCall(element, [&](Session& session, XExchange& exchange) -> Copied {
        const auto known = axAttribute(attribute);
        if (!known)
            return {AXError::attributeUnsupported};
        return AXAttributes(exchange, session.reader, m_screens.space(), m_entries)
            .copy(AXBody::of(element), *known);
    });
}

AXError X11Accessibility::setAttributeValue(const AXUIElement& element, const QString& attribute,
                                            const AXValue& value)
{
    const AXBody& body = AXBody::of(element);
    return onCall(element, [&](Session& session, XExchange& exchange) -> AXError {
        const auto known = axAttribute(attribute);
        if (!known || body.kind != AXBody::Kind::window)
            return AXError::attributeUnsupported;
        if (*known == AXAttribute::position) {
            const auto* point = std::get_if<Point>(&value);
            return point ? session.placer.setPosition(exchange, body.window, *point)
                         : AXError::illegalArgument;
        }
        if (*known == AXAttribute::size) {
            const auto* size = std::get_if<Size>(&value);
            return size ? session.placer.setSize(exchange, body.window, *size) : AXError::illegalArgument;
        }
        const auto* flag = std::get_if<bool>(&value);
        return setFlag(session, exchange, body.window, *known, flag);
    });
}

AXError X11Accessibility::setFlag(Session& session, XExchange& exchange, std::uint32_t window,
                                  AXAttribute attribute, const bool* value)
{
    const bool isSettable = attribute == AXAttribute::minimized || attribute == AXAttribute::fullScreen ||
                            attribute == AXAttribute::main || attribute == AXAttribute::focused;
    if (!isSettable)
        return AXError::attributeUnsupported;
    if (!value)
        return AXError::illegalArgument;
    const auto state = session.reader.state(exchange, window);
    if (!state)
        return exchange.isLate() ? AXError::cannotComplete : AXError::invalidUIElement;

    switch (attribute) {
    case AXAttribute::fullScreen:
        session.requests.changeState(window,
                                     *value ? WindowRequests::Change::add : WindowRequests::Change::remove,
                                     exchange.atoms().stateFullScreen);
        return AXError::success;
    case AXAttribute::minimized:
        if (*value && !state->isMinimized)
            session.requests.minimize(window);
        else if (!*value && state->isMinimized)
            session.requests.activate(window);
        return AXError::success;
    default:
        // A window loses the focus when another one gets it.
        if (!*value)
            return AXError::illegalArgument;
        session.requests.activate(window);
        return AXError::success;
    }
}

AXError X11Accessibility::performAction(const AXUIElement& element, const QString& action)
{
    const AXBody& body = AXBody::of(element);
    return onCall(element, [&](Session& session, XExchange& exchange) -> AXError {
        const bool isButton = body.kind == AXBody::Kind::closeButton || body.kind == AXBody::Kind::zoomButton;
        const bool isKnown =
            isButton ? action == QLatin1StringView("AXPress")
                     : body.kind == AXBody::Kind::window && action == QLatin1StringView("AXRaise");
        if (!isKnown)
            return AXError::actionUnsupported;
        const auto state = session.reader.state(exchange, body.window);
        if (!state)
            return exchange.isLate() ? AXError::cannotComplete : AXError::invalidUIElement;
        perform(session, exchange, body, *state);
        return AXError::success;
    });
}

/// Each element has one action.
void X11Accessibility::perform(Session& session, XExchange& exchange, const AXBody& body,
                               const WindowState& state)
{
    const XAtoms& atoms = exchange.atoms();
    if (body.kind == AXBody::Kind::closeButton) {
        session.requests.close(body.window);
    } else if (body.kind == AXBody::Kind::zoomButton) {
        const bool isZoomed = state.isMaximizedHorizontally && state.isMaximizedVertically;
        session.requests.changeState(body.window,
                                     isZoomed ? WindowRequests::Change::remove : WindowRequests::Change::add,
                                     atoms.stateMaximizedVertically, atoms.stateMaximizedHorizontally);
    } else {
        const bool canRestack = session.reader.isSupported(exchange, atoms.restackWindow);
        session.requests.raise(body.window,
                               canRestack ? WindowRequests::Way::message : WindowRequests::Way::configure);
    }
}

} // namespace orvane
