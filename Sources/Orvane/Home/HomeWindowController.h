// The suite's one regular window: made on first need, hidden when it is closed, and shown again at the next
// show.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

#include <functional>
#include <memory>

namespace orvane {

class HomeWindowController {
public:
    HomeWindowController();
    ~HomeWindowController();
    HomeWindowController(const HomeWindowController&) = delete;
    HomeWindowController& operator=(const HomeWindowController&) = delete;

    /// Sets the function that makes the root view. Without it there is no window to show.
    void setMakeContentView(std::function<AnyView()> makeContentView);
    /// Makes the window if there is none yet, brings it to the front and makes it active.
    void show();

    /// Returns the window, or null before the first show.
    [[nodiscard]] QWidget* window() const { return m_window.get(); }

private:
    void makeWindow();
    void place();

    std::function<AnyView()> m_makeContentView;
    std::unique_ptr<QWidget> m_window;
};

} // namespace orvane
