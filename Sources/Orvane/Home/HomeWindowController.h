// The suite's one regular window: made on first need, hidden when it is closed, and shown again at the next
// show. Its place and size are stored whenever it is left.
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
    /// Where nothing is to be seen of the window, makes it an entry of the task bar, without the focus.
    void showInTaskBar();
    /// Undoes showInTaskBar(), unless somebody has opened the window since; a window that a person has
    /// minimized stays.
    void leaveTaskBar();
    /// Sets what is called, in a later turn, when the window is closed or hidden with the program.
    void setWentOutOfSight(std::function<void()> handler);

    /// Returns the window, or null before the first show.
    [[nodiscard]] QWidget* window() const { return m_window.get(); }

private:
    void makeWindow();
    void place();
    void centre();

    std::function<AnyView()> m_makeContentView;
    std::function<void()> m_wentOutOfSight = [] {};
    std::unique_ptr<QWidget> m_window;
    /// True while nobody has opened the window and it is minimized for the sake of its entry.
    bool m_isEntryAlone = false;
};

} // namespace orvane
