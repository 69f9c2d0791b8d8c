// The objects behind the handles of accessibility elements on an X11 desktop. Main thread.
#pragma once

#include "Platform/Accessibility.h"
#include "PlatformLinux/Accessibility/WindowReader.h"

#include <chrono>

namespace orvane {

/// A handle's own body: its time-out is not that of other handles on the same element.
struct AXBody : AXUIElement::Body {
    enum class Kind { systemWide, application, window, closeButton, zoomButton };

    static constexpr std::chrono::duration<float> defaultTimeout{2};

    AXBody(Kind theKind, ProgramId theProgram, xcb_window_t theWindow)
        : kind(theKind), program(theProgram), window(theWindow)
    {
    }

    [[nodiscard]] bool isEqual(const Body& other) const override
    {
        const auto& body = static_cast<const AXBody&>(other);
        return kind == body.kind && program == body.program && window == body.window;
    }

    static AXUIElement systemWide() { return make(Kind::systemWide, {}, XCB_WINDOW_NONE); }
    static AXUIElement application(const ProgramId& program)
    {
        return make(Kind::application, program, XCB_WINDOW_NONE);
    }
    static AXUIElement ofWindow(Kind kind, xcb_window_t window) { return make(kind, {}, window); }

    static AXBody& of(const AXUIElement& element) { return static_cast<AXBody&>(element.body()); }

    const Kind kind;
    /// Set for an application.
    const ProgramId program;
    /// Set for a window, or for the window of a button.
    const xcb_window_t window;
    std::chrono::duration<float> timeout = defaultTimeout;

private:
    static AXUIElement make(Kind kind, const ProgramId& program, xcb_window_t window)
    {
        return AXUIElement(std::make_shared<AXBody>(kind, program, window));
    }
};

} // namespace orvane
