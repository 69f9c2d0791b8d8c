// A window of the test with known pixels, no two neighbours alike, above the desktop's other windows. It has
// the focus and notes what of the keyboard and the mouse reaches it.
#pragma once

#include <QPoint>
#include <QRect>
#include <QStringList>

#include <cstdint>
#include <memory>

namespace orvane::tests {

class PatternWindow {
public:
    /// In pixels of the root window. When it returns, the window is shown and has the focus.
    explicit PatternWindow(QRect place);
    ~PatternWindow();
    PatternWindow(const PatternWindow&) = delete;
    PatternWindow& operator=(const PatternWindow&) = delete;

    /// Returns the number 0xRRGGBB of a pixel of the root window that is inside.
    [[nodiscard]] std::uint32_t color(QPoint pixel) const;
    /// Returns it as "#RRGGBB".
    [[nodiscard]] QString hex(QPoint pixel) const;
    /// Returns what has come so far: "press", "release", "key 38" for a key with its X key code,
    /// in order.
    [[nodiscard]] QStringList noted();
    [[nodiscard]] std::uint32_t id() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace orvane::tests
