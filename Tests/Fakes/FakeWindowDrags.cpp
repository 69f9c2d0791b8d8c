#include "Fakes/FakeWindowDrags.h"

#include <algorithm>

namespace orvane {

namespace {

template <typename Value>
std::optional<Value> read(const AXUIElement& element, const char* attribute)
{
    const FakeAccessibility::Node& node = FakeAccessibility::node(element);
    const auto found = node.attributes.find(QString::fromLatin1(attribute));
    const Value* value = node.failure == AXError::success && found != node.attributes.end()
                             ? std::get_if<Value>(&found->second)
                             : nullptr;
    return value ? std::optional(*value) : std::nullopt;
}

} // namespace

class FakeWindowDrags::Watch : public WindowDragWatch {
public:
    Watch(std::shared_ptr<Watches> watches, std::function<void()> changed)
        : m_watches(std::move(watches)),
          m_changed(std::make_shared<const std::function<void()>>(std::move(changed)))
    {
        m_watches->push_back(this);
    }
    ~Watch() override { std::erase(*m_watches, this); }

    void announce() const
    {
        const auto changed = m_changed; // the handler may end its own watch
        (*changed)();
    }

private:
    std::shared_ptr<Watches> m_watches;
    std::shared_ptr<const std::function<void()>> m_changed;
};

FakeWindowDrags::FakeWindowDrags(FakeAccessibility& accessibility, FakeEventMonitors& monitors)
    : m_accessibility(accessibility), m_monitors(monitors)
{
    m_monitors.onLeftPress = [this] { notePlaces(); };
}

FakeWindowDrags::~FakeWindowDrags()
{
    m_monitors.onLeftPress = {};
}

std::unique_ptr<WindowDragWatch> FakeWindowDrags::watch(std::function<void()> changed)
{
    auto watch = std::make_unique<Watch>(m_watches, std::move(changed));
    if (m_watches->size() == 1)
        notePlaces();
    return watch;
}

void FakeWindowDrags::notePlaces()
{
    m_placesAtPress.clear();
    for (const AXUIElement& window : m_accessibility.windows) {
        if (const auto position = read<Point>(window, "AXPosition"))
            m_placesAtPress.push_back({window, *position});
    }
}

std::optional<WindowDrags::Candidate> FakeWindowDrags::candidate() const
{
    if (m_watches->empty())
        return std::nullopt;
    const auto application = read<AXUIElement>(m_accessibility.systemWide, "AXFocusedApplication");
    const auto window = application ? read<AXUIElement>(*application, "AXFocusedWindow") : std::nullopt;
    if (!window || read<bool>(*window, "AXFullScreen").value_or(false))
        return std::nullopt;
    Candidate candidate{.window = *window};
    const auto atPress = std::ranges::find(m_placesAtPress, *window, &Place::window);
    if (atPress != m_placesAtPress.end())
        candidate.initialPosition = atPress->position;
    candidate.position = read<Point>(*window, "AXPosition");
    return candidate;
}

void FakeWindowDrags::announce() const
{
    const auto watches = m_watches;
    const Watches snapshot = *watches;
    for (const Watch* watch : snapshot) {
        if (std::ranges::find(*watches, watch) != watches->end())
            watch->announce();
    }
}

} // namespace orvane
