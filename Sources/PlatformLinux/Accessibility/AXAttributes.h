// The attributes of this desktop's elements, read within one call. Main thread.
#pragma once

#include "Platform/Accessibility.h"
#include "PlatformLinux/Accessibility/WindowReader.h"

#include <vector>

namespace orvane {

class DesktopEntries;
class ScreenSpace;
struct AXBody;

/// The names that this desktop knows.
enum class AXAttribute {
    children,
    closeButton,
    focused,
    focusedApplication,
    focusedWindow,
    fullScreen,
    main,
    mainWindow,
    minimized,
    parent,
    position,
    role,
    size,
    title,
    windows,
    zoomButton,
};
std::optional<AXAttribute> axAttribute(const QString& name);

class AXAttributes {
public:
    AXAttributes(XExchange& exchange, WindowReader& reader, const ScreenSpace& space, DesktopEntries& entries)
        : m_exchange(exchange), m_reader(reader), m_space(space), m_entries(entries)
    {
    }

    Accessibility::Copied copy(const AXBody& body, AXAttribute attribute);

private:
    using Copied = Accessibility::Copied;
    Copied ofSystemWide(AXAttribute attribute);
    Copied ofApplication(const ProgramId& program, AXAttribute attribute);
    Copied ofWindow(xcb_window_t window, AXAttribute attribute);
    Copied ofButton(const AXBody& button, AXAttribute attribute);

    [[nodiscard]] Copied given(const AXValue& value) const;
    /// The result when the element is there, but not the value.
    [[nodiscard]] Copied nothing() const;
    /// The result when a window gave nothing.
    [[nodiscard]] Copied gone() const;

    Copied applicationTitle(const ProgramId& program);
    Copied windowFrame(xcb_window_t window, AXAttribute part);
    Copied windowState(xcb_window_t window, AXAttribute part);
    Copied windowButtons(xcb_window_t window, AXAttribute which);
    /// Returns the window that gets the keyboard when the program is in front.
    std::optional<xcb_window_t> mainWindow(const ProgramId& program);

    XExchange& m_exchange;
    WindowReader& m_reader;
    const ScreenSpace& m_space;
    DesktopEntries& m_entries;
};

} // namespace orvane
