// Windows of the fake accessibility interface, as drags move them. Reading their places isn't recorded as a
// call, since nobody is asked.
#pragma once

#include "Fakes/FakeAccessibility.h"
#include "Fakes/FakeEventMonitors.h"
#include "Platform/WindowDrags.h"

#include <vector>

namespace orvane {

class FakeWindowDrags : public WindowDrags {
public:
    /// Both outlive this object.
    FakeWindowDrags(FakeAccessibility& accessibility, FakeEventMonitors& monitors);
    ~FakeWindowDrags() override;
    FakeWindowDrags(const FakeWindowDrags&) = delete;
    FakeWindowDrags& operator=(const FakeWindowDrags&) = delete;

    [[nodiscard]] std::unique_ptr<WindowDragWatch> watch(std::function<void()> changed) override;
    [[nodiscard]] std::optional<Candidate> candidate() const override;

    /// Calls the watches, as after a window's move or a change of focus.
    void announce() const;
    [[nodiscard]] std::size_t watchCount() const { return m_watches->size(); }

private:
    class Watch;
    using Watches = std::vector<Watch*>;
    struct Place {
        AXUIElement window;
        Point position;
    };

    void notePlaces();

    FakeAccessibility& m_accessibility;
    FakeEventMonitors& m_monitors;
    std::shared_ptr<Watches> m_watches = std::make_shared<Watches>();
    std::vector<Place> m_placesAtPress;
};

} // namespace orvane
