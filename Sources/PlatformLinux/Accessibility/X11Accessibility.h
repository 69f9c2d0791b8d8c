// Programs and their windows as accessibility elements, from what the X server and the window manager know,
// over the link that the main thread shares. Main thread.
//
// A call waits for the X server alone, never for the program behind a window, and for no longer than its
// element's time-out. To set a value is a request to the window manager, which acts a moment later.
#pragma once

#include "Platform/Accessibility.h"
#include "PlatformLinux/Applications/DesktopEntries.h"

#include <memory>
#include <utility>

namespace orvane {

class Permissions;
class XExchange;
class X11Screens;
enum class AXAttribute;
struct AXBody;
struct WindowState;

class X11Accessibility : public Accessibility {
public:
    /// Both outlive this object.
    X11Accessibility(const X11Screens& screens, Permissions& permissions);
    ~X11Accessibility() override;

    AXUIElement createSystemWide() override;
    AXUIElement createApplication(std::int64_t processIdentifier) override;
    void setMessagingTimeout(const AXUIElement& element, std::chrono::duration<float> timeout) override;
    Copied copyAttributeValue(const AXUIElement& element, const QString& attribute) override;
    AXError setAttributeValue(const AXUIElement& element, const QString& attribute,
                              const AXValue& value) override;
    AXError performAction(const AXUIElement& element, const QString& action) override;

private:
    struct Session;
    template <typename Work>
    auto onCall(const AXUIElement& element, Work work)
        -> decltype(work(std::declval<Session&>(), std::declval<XExchange&>()));
    static AXError setFlag(Session& session, XExchange& exchange, std::uint32_t window, AXAttribute attribute,
                           const bool* value);
    static void perform(Session& session, XExchange& exchange, const AXBody& body, const WindowState& state);

    const X11Screens& m_screens;
    Permissions& m_permissions;
    DesktopEntries m_entries;
    std::unique_ptr<Session> m_session;
};

} // namespace orvane
