// The built program with the colour picker on, over a window with known pixels.
#pragma once

#include "Desktop/Support/PatternWindow.h"
#include "Desktop/Support/ShellFixture.h"

#include <optional>
#include <random>

namespace orvane::tests {

class ColorPickerFixture : public ShellDesktopTest {
protected:
    /// Starts with Control-Alt-C for a pick; `scale` is the number of pixels for each point.
    void startPicker(const QString& scale = QStringLiteral("1"));
    void pressPick() { chord({"Control_L", "Alt_L", "c"}); }
    /// Returns the overlay's place in the root window; nothing while it isn't shown.
    [[nodiscard]] std::optional<QRect> overlay() const;
    [[nodiscard]] bool overlayComes() const;
    [[nodiscard]] bool overlayGoes() const;
    /// Waits until the screen shows the window, which a compositor does a moment after the server.
    [[nodiscard]] bool isOnScreen(const PatternWindow& window, QPoint pixel) const;
    /// Picks the pixel as a person does; true if its value has been copied.
    [[nodiscard]] testing::AssertionResult picks(const PatternWindow& window, QPoint pixel);
    /// Picks at random places of a window.
    void pickAtRandom(const PatternWindow& window, QRect place, int count);

    /// Differs from run to run.
    unsigned m_seed = std::random_device()();
    std::mt19937 m_random{m_seed};
};

} // namespace orvane::tests
