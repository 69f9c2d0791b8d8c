// Snap Zones on a fake desktop: a person's actions with the left button, and the calls on the window.
#pragma once

#include "Capabilities/SnapZones/SnapZonesController.h"
#include "Fakes/FakePlatform.h"
#include "OrvaneCore/Windows/AXAttr.h"
#include "OrvaneKit/Panels/OrvaPanelWindow.h"

#include <gtest/gtest.h>

#include <ostream>

namespace orvane {

inline void PrintTo(const Point& point, std::ostream* out)
{
    *out << '(' << point.x << ", " << point.y << ')';
}

inline void PrintTo(const Rect& rect, std::ostream* out)
{
    *out << '(' << rect.origin.x << ", " << rect.origin.y << ") " << rect.size.width << " x "
         << rect.size.height;
}

inline void PrintTo(SnapZone zone, std::ostream* out)
{
    *out << QString(rawValue(zone)).toStdString();
}

} // namespace orvane

namespace orvane::tests {

inline const QString snapZonesID = QStringLiteral("net.lindenrow.orvane.snapzones");

/// One display of 1440 by 900 with a bar of 24 at the top and a dock of 70 at the bottom; one window with the
/// focus, 600 by 400, at (100, 100) from the upper left.
struct SnapZonesFixture : testing::Test {
    static constexpr Point start{100, 100};

    void store(const char* key, const QVariant& value)
    {
        fake.defaults.stored[snapZonesID + QLatin1Char('.') + QLatin1String(key)] = value;
    }
    [[nodiscard]] QVariant stored(const char* key) const
    {
        return fake.defaults.stored.value(snapZonesID + QLatin1Char('.') + QLatin1String(key));
    }

    SnapZonesController& controller()
    {
        if (!m_controller) {
            settings = std::make_shared<SnapZonesSettings>(ScopedPreferences(fake.defaults, snapZonesID));
            m_controller = SnapZonesController::make(settings, Log::make(snapZonesID));
        }
        return *m_controller;
    }
    std::shared_ptr<SnapZonesController> sharedController()
    {
        controller();
        return m_controller;
    }
    void dropController() { m_controller.reset(); }

    static FakeAccessibility::Node& node(const AXUIElement& element)
    {
        return FakeAccessibility::node(element);
    }
    void moveWindow(Point position)
    {
        setPosition(window, position);
        fake.windowDrags.announce();
    }
    static void setPosition(const AXUIElement& element, Point position)
    {
        node(element).attributes.insert_or_assign(AXAttr::position, position);
    }
    /// In coordinates from the upper left of the primary display.
    [[nodiscard]] Rect windowFrame() const
    {
        const auto& attributes = node(window).attributes;
        return {std::get<Point>(attributes.at(AXAttr::position)),
                std::get<Size>(attributes.at(AXAttr::size))};
    }
    /// Gives the focus to a window, which belongs to an application of its own.
    void focus(const AXUIElement& element)
    {
        const AXUIElement application = FakeAccessibility::makeElement();
        node(application).attributes.emplace(AXAttr::focusedWindow, element);
        node(fake.accessibility.systemWide)
            .attributes.insert_or_assign(AXAttr::focusedApplication, application);
        fake.windowDrags.announce();
    }
    void takeFocusAway() { node(fake.accessibility.systemWide).attributes.clear(); }

    void send(EventType type) { fake.eventMonitors.sendToOthers({.event = {.type = type}, .location = {}}); }
    void press() { send(EventType::leftMouseDown); }
    void release() { send(EventType::leftMouseUp); }
    /// Takes the pointer's place from the lower left of the primary display.
    void drag(Point pointer)
    {
        fake.eventMonitors.pointer = pointer;
        send(EventType::leftMouseDragged);
    }
    /// Begins a drag: the window moves, with the pointer in no zone.
    void beginMoving()
    {
        press();
        drag(middle);
        moveWindow({start.x + 50, start.y});
        drag(middle);
    }

    SnapDrag::State state() { return controller().drag().state(); }
    bool isPreviewShown()
    {
        const OrvaPanelWindow* panel = controller().preview().panel();
        return panel && panel->isVisible();
    }
    Rect previewFrame() { return controller().preview().panel()->frame(); }
    bool isFlyoutShown() { return controller().flyout().isVisible(); }

    using Kind = FakeAccessibility::Call::Kind;
    /// Returns the values that were set since `first`, in order.
    [[nodiscard]] std::vector<std::pair<QString, AXValue>> written(std::size_t first = 0) const
    {
        std::vector<std::pair<QString, AXValue>> list;
        for (std::size_t i = first; i < fake.accessibility.calls.size(); ++i) {
            const auto& call = fake.accessibility.calls[i];
            if (call.kind == Kind::set && call.element == window)
                list.emplace_back(call.name, *call.value);
        }
        return list;
    }
    [[nodiscard]] std::size_t callCount() const { return fake.accessibility.calls.size(); }

    static constexpr Point middle{700, 450};
    static constexpr Point leftEdge{3, 450};
    static constexpr Point rightEdge{1437, 450};
    static constexpr Point topEdge{700, 897};

    FakePlatform fake;
    AXUIElement window = fake.accessibility.focusNewWindow(start, {600, 400});
    std::shared_ptr<SnapZonesSettings> settings;

private:
    std::shared_ptr<SnapZonesController> m_controller;
};

} // namespace orvane::tests
