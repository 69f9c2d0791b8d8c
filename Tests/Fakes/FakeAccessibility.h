// Elements that a test makes, and a record of every call on them.
#pragma once

#include "Platform/Accessibility.h"

#include <QMap>
#include <QStringList>

#include <functional>
#include <map>
#include <vector>

namespace orvane {

class FakeAccessibility : public Accessibility {
public:
    /// The state of an element that a test knows.
    struct Node : AXUIElement::Body {
        [[nodiscard]] bool isEqual(const Body& other) const override { return this == &other; }

        std::map<QString, AXValue> attributes;
        /// Each may have an effect; an action that isn't here is unsupported.
        std::map<QString, std::function<void()>> actions;
        /// Changes a value that is set, as a program may; without it, the element takes the value as it is.
        std::function<AXValue(const QString& attribute, const AXValue& value)> adjust;
        /// Given instead of an answer when it isn't success.
        AXError failure = AXError::success;
        std::chrono::duration<float> timeout{0};
    };

    struct Call {
        enum class Kind { copy, set, perform } kind;
        AXUIElement element;
        QString name;
        std::optional<AXValue> value = {};
    };

    AXUIElement createSystemWide() override { return systemWide; }
    AXUIElement createApplication(std::int64_t processIdentifier) override;
    void setMessagingTimeout(const AXUIElement& element, std::chrono::duration<float> timeout) override;
    Copied copyAttributeValue(const AXUIElement& element, const QString& attribute) override;
    AXError setAttributeValue(const AXUIElement& element, const QString& attribute,
                              const AXValue& value) override;
    AXError performAction(const AXUIElement& element, const QString& action) override;

    static AXUIElement makeElement() { return AXUIElement(std::make_shared<Node>()); }
    static Node& node(const AXUIElement& element) { return static_cast<Node&>(element.body()); }

    /// Makes a window with the focus at a place; it belongs to a new application, which is the focused one
    /// from now on.
    AXUIElement focusNewWindow(Point position, Size size);

    AXUIElement systemWide = makeElement();
    /// Those that had the focus once.
    std::vector<AXUIElement> windows;
    std::vector<Call> calls;

private:
    std::map<std::int64_t, AXUIElement> m_applications;
};

} // namespace orvane
