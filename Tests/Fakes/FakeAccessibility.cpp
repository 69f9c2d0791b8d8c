#include "Fakes/FakeAccessibility.h"

namespace orvane {

AXUIElement FakeAccessibility::createApplication(std::int64_t processIdentifier)
{
    return m_applications.try_emplace(processIdentifier, makeElement()).first->second;
}

void FakeAccessibility::setMessagingTimeout(const AXUIElement& element, std::chrono::duration<float> timeout)
{
    node(element).timeout = timeout;
}

Accessibility::Copied FakeAccessibility::copyAttributeValue(const AXUIElement& element,
                                                            const QString& attribute)
{
    calls.push_back({Call::Kind::copy, element, attribute});
    const Node& asked = node(element);
    if (asked.failure != AXError::success)
        return {asked.failure};
    const auto found = asked.attributes.find(attribute);
    if (found == asked.attributes.end())
        return {AXError::attributeUnsupported};
    return {AXError::success, found->second};
}

AXError FakeAccessibility::setAttributeValue(const AXUIElement& element, const QString& attribute,
                                             const AXValue& value)
{
    calls.push_back({Call::Kind::set, element, attribute, value});
    Node& asked = node(element);
    if (asked.failure != AXError::success)
        return asked.failure;
    const auto found = asked.attributes.find(attribute);
    if (found == asked.attributes.end())
        return AXError::attributeUnsupported;
    if (found->second.index() != value.index())
        return AXError::illegalArgument;
    found->second = asked.adjust ? asked.adjust(attribute, value) : value;
    return AXError::success;
}

AXError FakeAccessibility::performAction(const AXUIElement& element, const QString& action)
{
    calls.push_back({Call::Kind::perform, element, action});
    const Node& asked = node(element);
    if (asked.failure != AXError::success)
        return asked.failure;
    const auto found = asked.actions.find(action);
    if (found == asked.actions.end())
        return AXError::actionUnsupported;
    if (found->second)
        found->second();
    return AXError::success;
}

AXUIElement FakeAccessibility::focusNewWindow(Point position, Size size)
{
    const AXUIElement window = makeElement();
    windows.push_back(window);
    node(window).attributes = {{QStringLiteral("AXPosition"), position},
                               {QStringLiteral("AXSize"), size},
                               {QStringLiteral("AXFullScreen"), false}};
    const AXUIElement application = makeElement();
    node(application).attributes.emplace(QStringLiteral("AXFocusedWindow"), window);
    node(systemWide).attributes.insert_or_assign(QStringLiteral("AXFocusedApplication"), application);
    return window;
}

} // namespace orvane
