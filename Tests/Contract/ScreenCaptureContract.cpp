#include "Contract/Support/PluggedMonitor.h"
#include "Desktop/Support/Hardware.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakeRunLoop.h"
#include "Fakes/FakeScreenCapture.h"
#include "PlatformLinux/ScreenCapture/X11ScreenCapture.h"
#include "PlatformLinux/Screens/X11Screens.h"
#include "PlatformLinux/Session/QtRunLoop.h"
#include "Support/Eventually.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <vector>

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;
/// Where the pattern is on the first display.
constexpr QRect patternPlace(300, 200, 64, 48);

/// A colour for each pixel, with no two neighbours alike.
std::uint32_t patternColor(int x, int y)
{
    auto hash = static_cast<std::uint32_t>(x * 7919 + y * 104729 + 1);
    hash ^= hash >> 7;
    hash *= 2654435761u;
    return hash >> 8;
}

/// Displays, the first of which shows the pattern.
class Stage {
public:
    virtual ~Stage() = default;
    virtual ScreenCapture& capture() = 0;
    virtual Screens& screens() = 0;
    virtual void turn() = 0;
    virtual void plugIn() = 0;
    virtual void unplug() = 0;
};

class FakeStage : public Stage {
public:
    FakeStage()
    {
        m_capture.color = [](std::uint32_t, int x, int y) {
            return patternPlace.contains(x, y) ? patternColor(x - patternPlace.x(), y - patternPlace.y())
                                               : 0x808080;
        };
    }
    ScreenCapture& capture() override { return m_capture; }
    Screens& screens() override { return m_screens; }
    void turn() override { m_runLoop.drain(); }
    void plugIn() override
    {
        const Rect frame{{1440, -100}, {1280, 1000}};
        m_screens.arrange(m_screens.list + QList<orvane::Screen>{FakeScreens::screen(2, frame, frame)});
    }
    void unplug() override { m_screens.arrange(m_screens.list.first(1)); }

private:
    NotificationCenter m_center;
    FakeClock m_clock;
    FakeRunLoop m_runLoop{m_clock};
    FakeScreens m_screens{m_center};
    FakeScreenCapture m_capture{m_screens, m_runLoop};
};

class PatternWindow : public QWidget {
public:
    PatternWindow()
    {
        setWindowFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        setGeometry(patternPlace);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QImage image(size(), QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, 0xFF000000 | patternColor(x, y));
        }
        QPainter(this).drawImage(0, 0, image);
    }
};

class LinuxStage : public Stage {
public:
    LinuxStage()
    {
        m_hardware.movePointer(patternPlace.center()); // it isn't in the picture
        m_window.show();
    }
    ScreenCapture& capture() override { return m_capture; }
    Screens& screens() override { return m_screens; }
    void turn() override {}
    void plugIn() override { m_second.emplace(); }
    void unplug() override { m_second.reset(); }

private:
    Hardware m_hardware;
    PatternWindow m_window;
    NotificationCenter m_center;
    QtRunLoop m_runLoop;
    X11Screens m_screens{m_center};
    X11ScreenCapture m_capture{m_screens, m_runLoop};
    std::optional<PluggedMonitor> m_second;
};

std::uint32_t numberOf(const orvane::Screen& screen)
{
    return screen.deviceDescription.value(orvane::Screen::screenNumberKey()).toUInt();
}

template <typename Subject>
class ScreenCaptureContract : public ::testing::Test {
protected:
    using Answer = std::optional<ScreenImage>;

    std::uint32_t first() { return numberOf(stage.screens().screens().first()); }

    ScreenCapturer::Handler note()
    {
        return [this](Answer image) { answers.push_back(std::move(image)); };
    }
    bool answersCome(std::size_t count)
    {
        return eventually(deadline, [&] {
            stage.turn();
            return answers.size() >= count;
        });
    }
    Answer display(std::uint32_t number)
    {
        const std::size_t before = answers.size();
        capturer->captureDisplay(number, note());
        EXPECT_TRUE(answersCome(before + 1));
        return answers.empty() ? Answer() : answers.back();
    }
    Answer part(const ScreenCapturer::Part& wanted)
    {
        const std::size_t before = answers.size();
        capturer->capturePart(first(), wanted, note());
        EXPECT_TRUE(answersCome(before + 1));
        return answers.empty() ? Answer() : answers.back();
    }
    /// Waits until the display shows the pattern.
    bool patternIsShown()
    {
        return eventually(deadline, [&] {
            const Answer image = part({.source = {{300, 200}, {1, 1}}, .width = 1, .height = 1});
            return image && image->pixel(0, 0) == (0xFF000000 | patternColor(0, 0));
        });
    }

    Subject stage;
    std::unique_ptr<ScreenCapturer> capturer = stage.capture().makeCapturer();
    std::vector<Answer> answers;
};

using Subjects = ::testing::Types<FakeStage, LinuxStage>;
TYPED_TEST_SUITE(ScreenCaptureContract, Subjects);

} // namespace

TYPED_TEST(ScreenCaptureContract, ADisplaysPictureHasEachOfItsPixels)
{
    ASSERT_TRUE(this->patternIsShown());
    const auto image = this->display(this->first());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 1440);
    EXPECT_EQ(image->height, 900);
    ASSERT_EQ(image->pixels.size(), 1440 * 900 * 4);
    for (int y = 0; y < patternPlace.height(); ++y) {
        for (int x = 0; x < patternPlace.width(); ++x) {
            ASSERT_EQ(image->pixel(patternPlace.x() + x, patternPlace.y() + y),
                      0xFF000000 | patternColor(x, y))
                << x << ' ' << y;
        }
    }
}

TYPED_TEST(ScreenCaptureContract, APartIsEnlargedToBlocksOfEqualSize)
{
    ASSERT_TRUE(this->patternIsShown());
    const auto image = this->part({.source = {{310, 215}, {20, 10}}, .width = 160, .height = 80});
    ASSERT_TRUE(image);
    ASSERT_EQ(image->width, 160);
    ASSERT_EQ(image->height, 80);
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 160; ++x)
            ASSERT_EQ(image->pixel(x, y), 0xFF000000 | patternColor(10 + x / 8, 15 + y / 8)) << x << ' ' << y;
    }
}

TYPED_TEST(ScreenCaptureContract, OutsideOfTheDisplayItIsBlack)
{
    const auto image = this->part({.source = {{-10, 895}, {20, 10}}, .width = 20, .height = 10});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixel(0, 0), 0xFF000000u);
    EXPECT_EQ(image->pixel(9, 4), 0xFF000000u);
    EXPECT_EQ(image->pixel(19, 9), 0xFF000000u);
    const auto beyond = this->part({.source = {{-50, -50}, {20, 20}}, .width = 2, .height = 2});
    ASSERT_TRUE(beyond);
    EXPECT_EQ(beyond->pixel(1, 1), 0xFF000000u);
}

TYPED_TEST(ScreenCaptureContract, APartWithoutAreaHasNoPicture)
{
    EXPECT_FALSE(this->part({.source = {{0, 0}, {10, 10}}, .width = 0, .height = 10}));
}

TYPED_TEST(ScreenCaptureContract, AnUnknownDisplayHasNoPicture)
{
    EXPECT_FALSE(this->display(this->first() + 1));
}

TYPED_TEST(ScreenCaptureContract, AHandlerIsCalledLaterAndInOrder)
{
    this->capturer->captureDisplay(this->first(), this->note());
    this->capturer->capturePart(this->first(), {.source = {{0, 0}, {5, 5}}, .width = 5, .height = 5},
                                this->note());
    EXPECT_TRUE(this->answers.empty());
    ASSERT_TRUE(this->answersCome(2));
    EXPECT_EQ(this->answers[0].value_or(ScreenImage()).width, 1440);
    EXPECT_EQ(this->answers[1].value_or(ScreenImage()).width, 5);
}

TYPED_TEST(ScreenCaptureContract, AfterItsEndACapturerAnswersNothing)
{
    auto others = this->stage.capture().makeCapturer();
    int calls = 0;
    this->capturer->captureDisplay(this->first(), [&](auto) { ++calls; });
    this->capturer->captureDisplay(this->first(), [&](auto) { ++calls; });
    this->capturer.reset();
    others->captureDisplay(this->first(), this->note());
    ASSERT_TRUE(this->answersCome(1));
    EXPECT_EQ(calls, 0);
}

TYPED_TEST(ScreenCaptureContract, AHandlerMayEndItsCapturer)
{
    bool isCalled = false;
    this->capturer->captureDisplay(this->first(), [&](auto) {
        this->capturer.reset();
        isCalled = true;
    });
    EXPECT_TRUE(eventually(deadline, [&] {
        this->stage.turn();
        return isCalled;
    }));
}

TYPED_TEST(ScreenCaptureContract, EachDisplayHasAPictureUntilItGoes)
{
    this->stage.plugIn();
    ASSERT_TRUE(eventually(deadline, [&] { return this->stage.screens().screens().size() == 2; }));
    const std::uint32_t second = numberOf(this->stage.screens().screens()[1]);
    const auto image = this->display(second);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->width, 1280);
    EXPECT_EQ(image->height, 1000);
    // The list of displays may still have it.
    this->stage.unplug();
    EXPECT_FALSE(this->display(second));
}

} // namespace orvane::tests
