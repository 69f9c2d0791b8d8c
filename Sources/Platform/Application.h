// The application object of the process. Main thread.
#pragma once

#include "Platform/Menu.h"

#include <QStringView>

#include <memory>

namespace orvane {

class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;
    /// Called once, by the running event loop.
    virtual void applicationDidFinishLaunching() = 0;
    /// The program was started again, or its task bar entry was clicked. The answer tells whether the
    /// platform should go on with its own handling.
    virtual bool applicationShouldHandleReopen(bool hasVisibleWindows) = 0;
};

class Application {
public:
    enum class ActivationPolicy {
        regular,   // shows in the Dock or task bar, also while no window is open where the platform can
        accessory, // isn't shown there by itself; where open windows are listed, its own are too
    };

    /// Who started this process: the session by itself, as at login, or a person by any other way.
    enum class StartedBy { person, session };

    virtual ~Application() = default;

    [[nodiscard]] virtual StartedBy startedBy() const = 0;
    /// The delegate must outlive the application's run.
    virtual void setDelegate(ApplicationDelegate* delegate) = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    [[nodiscard]] virtual ActivationPolicy activationPolicy() const = 0;
    /// Brings the program's windows to the front and makes one of them active, whichever program the user is
    /// working with. Meant for what the user has just asked for.
    virtual void activateIgnoringOtherApps() = 0;
    /// Sets the menu bar, whose items are the menus; the desktop decides where it is seen. Its key
    /// equivalents work in every window of the program. Null takes it away.
    virtual void setMainMenu(std::shared_ptr<Menu> menu) = 0;
    [[nodiscard]] virtual std::shared_ptr<const Menu> mainMenu() const = 0;
    /// Returns the modifiers of the key equivalent that the pressed ones choose in this desktop's menus.
    [[nodiscard]] virtual EventFlags keyEquivalentModifiers(EventFlags pressed) const = 0;
    /// Sets the menu that lists the program's windows; the platform keeps the list behind the items that the
    /// menu has.
    virtual void setWindowsMenu(std::shared_ptr<Menu> menu) = 0;
    /// Sends a command, such as "copy:", to whatever has the focus in the program's active window.
    /// False when nothing there takes it.
    virtual bool sendAction(QStringView selector) = 0;
    /// Puts all windows of the program out of sight until it is activated again.
    virtual void hide() = 0;
    /// Shows a window with the program's name, icon and version.
    virtual void orderFrontStandardAboutPanel() = 0;
    /// Ends the event loop; what is queued behind this call may not run any more.
    virtual void terminate() = 0;
};

} // namespace orvane
