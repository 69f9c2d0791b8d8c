#include "PlatformLinux/ScreenCapture/X11ScreenCapture.h"

#include "Platform/RunLoop.h"
#include "PlatformLinux/ScreenCapture/CaptureThread.h"
#include "PlatformLinux/Screens/X11Screens.h"

#include <algorithm>

namespace orvane {

namespace {

std::uint32_t numberOf(const Screen& screen)
{
    return screen.deviceDescription.value(Screen::screenNumberKey()).toUInt();
}

class X11ScreenCapturer : public ScreenCapturer {
public:
    X11ScreenCapturer(const X11Screens& screens, RunLoop& runLoop) : m_screens(screens), m_runLoop(runLoop) {}

    void captureDisplay(std::uint32_t display, Handler handler) override
    {
        const auto place = find(display);
        take(place ? std::optional(CaptureThread::Task{.display = place->pixels}) : std::nullopt,
             std::move(handler));
    }

    void capturePart(std::uint32_t display, const Part& part, Handler handler) override
    {
        const auto place = find(display);
        std::optional<CaptureThread::Task> task;
        if (place && part.width > 0 && part.height > 0) {
            const double scale = place->scale;
            const Rect source{
                {place->pixels.x + part.source.minX() * scale, place->pixels.y + part.source.minY() * scale},
                {part.source.width() * scale, part.source.height() * scale}};
            task = {place->pixels, CaptureThread::Scaled{source, part.width, part.height, part.scaling}};
        }
        take(std::move(task), std::move(handler));
    }

private:
    struct Place {
        PixelRect pixels;
        double scale = 1;
    };

    [[nodiscard]] std::optional<Place> find(std::uint32_t display) const
    {
        const QList<Screen> screens = m_screens.screens();
        const auto found = std::ranges::find(screens, display, numberOf);
        if (found == screens.end())
            return std::nullopt;
        const auto& place =
            m_screens.space().displays().at(static_cast<std::size_t>(found - screens.begin()));
        return Place{PixelRect::around(place.pixels), place.scale};
    }

    void take(std::optional<CaptureThread::Task> task, Handler handler)
    {
        // The thread outlives no capturer, but what it has queued may.
        auto answer = [&runLoop = m_runLoop, life = std::weak_ptr(m_life),
                       handler = std::move(handler)](std::optional<ScreenImage> image) {
            runLoop.perform([life, handler, image = std::move(image)]() mutable {
                if (!life.expired())
                    handler(std::move(image));
            });
        };
        if (!task) {
            answer(std::nullopt);
            return;
        }
        task->answer = std::move(answer);
        if (!m_thread)
            m_thread = std::make_unique<CaptureThread>();
        m_thread->add(std::move(*task));
    }

    const X11Screens& m_screens;
    RunLoop& m_runLoop;
    std::shared_ptr<int> m_life = std::make_shared<int>();
    /// Made with the first picture.
    std::unique_ptr<CaptureThread> m_thread;
};

} // namespace

std::unique_ptr<ScreenCapturer> X11ScreenCapture::makeCapturer()
{
    return std::make_unique<X11ScreenCapturer>(m_screens, m_runLoop);
}

} // namespace orvane
