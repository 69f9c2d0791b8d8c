// The user interfaces of other programs: elements with attributes and actions. Main thread.
//
// Positions are in points, with the origin at the upper left corner of the primary display and y downwards.
// Each call may wait for the program that owns the element, but never beyond the element's time-out.
#pragma once

#include "Platform/Geometry.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

namespace orvane {

/// A handle on an element, which may be gone by now. Copies are the same handle; two handles on the same
/// element are equal.
class AXUIElement {
public:
    /// The state that a platform keeps for a handle.
    class Body {
    public:
        virtual ~Body() = default;
        [[nodiscard]] virtual bool isEqual(const Body& other) const = 0;
    };

    explicit AXUIElement(std::shared_ptr<Body> body) : m_body(std::move(body)) {}

    [[nodiscard]] Body& body() const { return *m_body; }

    friend bool operator==(const AXUIElement& one, const AXUIElement& other)
    {
        return one.m_body == other.m_body || one.m_body->isEqual(*other.m_body);
    }

private:
    std::shared_ptr<Body> m_body;
};

using AXValue = std::variant<QString, bool, QUrl, AXUIElement, QList<AXUIElement>, Point, Size>;

enum class AXError {
    success,
    failure,
    /// The value is of a kind that the attribute can't have.
    illegalArgument,
    /// The element is gone.
    invalidUIElement,
    /// The program that owns the element didn't answer in time.
    cannotComplete,
    attributeUnsupported,
    actionUnsupported,
    /// This program isn't allowed to look.
    apiDisabled,
    /// The element has the attribute, but nothing stands in it now.
    noValue,
};

class Accessibility {
public:
    struct Copied {
        AXError error = AXError::failure;
        /// Present only with `success`.
        std::optional<AXValue> value = {};
    };

    virtual ~Accessibility() = default;

    /// Returns the element that knows the focused application.
    virtual AXUIElement createSystemWide() = 0;
    /// Returns a handle whether or not there is such a process.
    virtual AXUIElement createApplication(std::int64_t processIdentifier) = 0;

    /// Limits how long each later call on this handle may wait; 0 restores the default.
    virtual void setMessagingTimeout(const AXUIElement& element, std::chrono::duration<float> timeout) = 0;

    virtual Copied copyAttributeValue(const AXUIElement& element, const QString& attribute) = 0;
    /// Success says that the request was taken; what the program did with it is seen by reading the
    /// attribute.
    virtual AXError setAttributeValue(const AXUIElement& element, const QString& attribute,
                                      const AXValue& value) = 0;
    virtual AXError performAction(const AXUIElement& element, const QString& action) = 0;
};

} // namespace orvane
