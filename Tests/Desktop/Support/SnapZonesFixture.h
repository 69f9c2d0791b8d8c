// The built program with Snap Zones on, windows to snap, and drags by the hardware pointer.
#pragma once

#include "Desktop/Support/Peer.h"
#include "Desktop/Support/ShellFixture.h"
#include "Desktop/Support/WindowDrag.h"
#include "Desktop/Support/Windows.h"

#include <QColor>
#include <QImage>
#include <QRectF>

#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace orvane::tests {

enum class Zone {
    leftHalf,
    rightHalf,
    topHalf,
    bottomHalf,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    maximize,
    center,
};

inline constexpr Zone allZones[] = {
    Zone::leftHalf, Zone::rightHalf,  Zone::topHalf,     Zone::bottomHalf, Zone::topLeft,
    Zone::topRight, Zone::bottomLeft, Zone::bottomRight, Zone::maximize,   Zone::center,
};

/// Returns the zone's name in the preferences.
[[nodiscard]] QString nameOf(Zone zone);
void PrintTo(Zone zone, std::ostream* out);

enum class WindowKind { qt, gtkHeaderBar, terminal };

void PrintTo(WindowKind kind, std::ostream* out);

/// The space kept free around the area, and between neighbours.
struct Gaps {
    double outer = 0;
    double inner = 0;
};

/// Returns the part of an area that a zone takes, in the root window, where y runs downwards.
[[nodiscard]] QRectF placeOf(Zone zone, QRectF area, Gaps gaps = {});
/// Succeeds if each edge is the nearest whole pixel to the zone's. With size increments it may end earlier,
/// by less than one of them.
[[nodiscard]] testing::AssertionResult fills(QRect frame, QRectF place, QSize increments = {1, 1});

class SnapZonesDesktopTest : public ShellDesktopTest {
protected:
    /// A window of another program; it is closed with the object.
    struct Target {
        std::unique_ptr<Peer> peer;
        WindowId window = 0;
        QColor colour = {}; // the colour of its content
    };
    struct Setup {
        QVariantMap settings = {}; // settings of Snap Zones
        QStringList others = {};   // further capabilities that are on
        QMap<QString, StoredShortcut> shortcuts = {};
        QVariantMap more = {};
    };

    void TearDown() override;

    /// Starts with Control-Alt and a digit for each zone in their order, and Control-Alt-L for the layouts.
    void startSnapping(const Setup& setup);
    void startSnapping() { startSnapping(Setup{}); }
    /// Opens a window of this kind at about this place and makes it active; its title is the kind's name and
    /// a number.
    [[nodiscard]] Target open(WindowKind kind, QRect place);
    [[nodiscard]] WindowDrag drag(const Target& target);
    void pressShortcut(Zone zone);
    void pressLayoutsShortcut() { chord({"Control_L", "Alt_L", "l"}); }

    /// Returns once the program's main thread has seen all that the hardware did before.
    void settle();
    /// Returns the program's windows on the screen without its icon.
    [[nodiscard]] QList<ScreenWindow> shown() const { return m_screen.windowsOf(m_program->pid()); }
    /// Looks once, after all that the hardware did.
    [[nodiscard]] bool nothingIsShown();
    [[nodiscard]] bool nothingIsShownSoon();
    /// The screen as it is before a window is dragged over it.
    struct Look {
        QImage picture;
        QRect hidden; // the part that the window hides
    };
    [[nodiscard]] Look look(const Target& target) const;
    /// Succeeds if a preview stands there and colours what is behind it, and nothing beside it.
    [[nodiscard]] testing::AssertionResult previewCovers(QRectF place, const Look& before,
                                                         const Target& dragged);
    [[nodiscard]] testing::AssertionResult comesToFill(const Target& target, QRectF place);

    /// The monitors, and the first place of a window that is to be moved.
    static constexpr QRect primary{0, 0, 1440, 900};
    static constexpr QRect second{1440, 0, 1280, 1000};
    static constexpr QRect initial{380, 240, 420, 260};
    Windows m_windows;

private:
    [[nodiscard]] testing::AssertionResult coloursAreThoseOfAPreview(QRect place, const Look& before,
                                                                     const Target& dragged) const;
    /// Returns the part of a window that shows only its colour.
    [[nodiscard]] QRect contentOf(const Target& target) const;
    int m_opened = 0;
};

} // namespace orvane::tests
