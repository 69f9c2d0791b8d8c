#include "Desktop/Support/ColorPickerFixture.h"

#include "Desktop/Support/Peer.h"
#include "Support/Eventually.h"

namespace orvane::tests {

namespace {

constexpr auto deadline = 15s;
constexpr StoredShortcut controlOptionC{8, 0x1800};

} // namespace

void ColorPickerFixture::startPicker(const QString& scale)
{
    const Stored stored{.enabled = {QStringLiteral("colorpicker")},
                        .shortcuts = {{QStringLiteral("colorpicker.pick"), controlOptionC}}};
    m_program = std::make_unique<Program>(
        Program::Start{.defaults = defaults(stored),
                       .firstRun = Program::FirstRun::done,
                       .environment = {{QStringLiteral("QT_SCALE_FACTOR"), scale}}});
    ASSERT_TRUE(program().waitUntilReady());
    ASSERT_TRUE(eventually(
        deadline, [this] { return statusMenu().labels().contains(QStringLiteral("Color Picker")); }));
}

std::optional<QRect> ColorPickerFixture::overlay() const
{
    for (const ScreenWindow& window : m_screen.windowsOf(m_program->pid())) {
        if (window.geometry.width() > 1000)
            return window.geometry;
    }
    return std::nullopt;
}

bool ColorPickerFixture::overlayComes() const
{
    return eventually(deadline, [this] { return overlay().has_value(); });
}

bool ColorPickerFixture::overlayGoes() const
{
    return eventually(deadline, [this] { return !overlay(); });
}

bool ColorPickerFixture::isOnScreen(const PatternWindow& window, QPoint pixel) const
{
    return eventually(deadline, [&] {
        const QImage picture = m_screen.picture(QRect(pixel, QSize(1, 1)));
        return !picture.isNull() && (picture.pixel(0, 0) & 0xFFFFFF) == window.color(pixel);
    });
}

testing::AssertionResult ColorPickerFixture::picks(const PatternWindow& window, QPoint pixel)
{
    m_hardware.movePointer(pixel);
    pressPick();
    if (!overlayComes())
        return testing::AssertionFailure() << "no overlay";
    m_hardware.click(Button::left);
    if (!overlayGoes())
        return testing::AssertionFailure() << "the overlay stays";
    const QString wanted = window.hex(pixel);
    if (eventually(deadline, [&] { return clipboardText() == wanted; }))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "at " << pixel.x() << ' ' << pixel.y() << ": " << clipboardText().toStdString()
           << " instead of " << wanted.toStdString();
}

void ColorPickerFixture::pickAtRandom(const PatternWindow& window, QRect place, int count)
{
    SCOPED_TRACE("seed " + std::to_string(m_seed));
    ASSERT_TRUE(isOnScreen(window, place.center()));
    std::uniform_int_distribution across(place.left(), place.right());
    std::uniform_int_distribution down(place.top(), place.bottom());
    for (int i = 0; i < count; ++i) {
        const QPoint pixel(across(m_random), down(m_random));
        ASSERT_TRUE(picks(window, pixel)) << "pick " << i;
    }
}

} // namespace orvane::tests
