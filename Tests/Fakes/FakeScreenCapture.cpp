#include "Fakes/FakeScreenCapture.h"

#include <algorithm>
#include <cmath>

namespace orvane {

class FakeScreenCapture::Capturer : public ScreenCapturer {
public:
    explicit Capturer(FakeScreenCapture& owner) : m_owner(owner) { ++m_owner.capturers; }
    ~Capturer() override { --m_owner.capturers; }
    Capturer(const Capturer&) = delete;
    Capturer& operator=(const Capturer&) = delete;

    void captureDisplay(std::uint32_t display, Handler handler) override
    {
        take({display, std::nullopt}, std::move(handler));
    }
    void capturePart(std::uint32_t display, const Part& part, Handler handler) override
    {
        take({display, part}, std::move(handler));
    }

private:
    void take(const Request& request, Handler handler)
    {
        m_owner.requests.push_back(request);
        // The picture is taken when it is given: the display may be gone by then.
        m_owner.answer(
            [&owner = m_owner, life = std::weak_ptr(m_life), request, handler = std::move(handler)] {
                if (!life.expired())
                    handler(owner.picture(request));
            });
    }

    FakeScreenCapture& m_owner;
    std::shared_ptr<int> m_life = std::make_shared<int>();
};

std::unique_ptr<ScreenCapturer> FakeScreenCapture::makeCapturer()
{
    return std::make_unique<Capturer>(*this);
}

void FakeScreenCapture::answer(std::function<void()> give)
{
    if (isHeld)
        m_heldAnswers.push_back(std::move(give));
    else
        m_runLoop.perform(std::move(give));
}

void FakeScreenCapture::release()
{
    isHeld = false;
    for (auto& give : std::exchange(m_heldAnswers, {}))
        m_runLoop.perform(std::move(give));
}

std::optional<ScreenImage> FakeScreenCapture::picture(const Request& request) const
{
    const auto found = std::ranges::find_if(m_screens.list, [&](const Screen& screen) {
        return screen.deviceDescription.value(Screen::screenNumberKey()).toUInt() == request.display;
    });
    if (!isPermitted || found == m_screens.list.end())
        return std::nullopt;
    const double scale = found->backingScaleFactor;
    const int width = static_cast<int>(found->frame.width() * scale);
    const int height = static_cast<int>(found->frame.height() * scale);
    const auto& part = request.part;
    if (part && (part->width <= 0 || part->height <= 0))
        return std::nullopt;
    ScreenImage image{part ? part->width : width, part ? part->height : height, {}};
    image.pixels.resize(qsizetype{image.width} * image.height * 4);
    auto* pixels = reinterpret_cast<std::uint32_t*>(image.pixels.data());
    const Rect source = part ? part->source : Rect{{0, 0}, {width / scale, height / scale}};
    // With smooth scaling the real ones mix neighbours; here the nearest pixel has to do.
    const auto nearest = [scale](double origin, double length, int at, int count) {
        return static_cast<int>(std::floor(scale * (origin + (at + 0.5) * length / count)));
    };
    for (int y = 0; y < image.height; ++y) {
        const int fromY = nearest(source.minY(), source.height(), y, image.height);
        for (int x = 0; x < image.width; ++x) {
            const int fromX = part ? nearest(source.minX(), source.width(), x, image.width) : x;
            const bool isInside = fromX >= 0 && fromY >= 0 && fromX < width && fromY < height;
            *pixels++ = 0xFF000000 | (isInside ? color(request.display, fromX, fromY) & 0xFFFFFF : 0);
        }
    }
    return image;
}

} // namespace orvane
