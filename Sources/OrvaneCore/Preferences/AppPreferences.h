// Settings of the application itself. Main thread.
//
// The user must never lose the last way to reach the program: of the Dock icon and the menu bar item, one is
// always shown.
#pragma once

#include "OrvaneCore/Base/Observable.h"

namespace orvane {

class DefaultsStore;

class AppPreferences : public ObservableObject {
public:
    /// The store must outlive this object.
    explicit AppPreferences(DefaultsStore& defaults);

    [[nodiscard]] bool showDockIcon() const { return m_showDockIcon.get(); }
    [[nodiscard]] bool showMenuBarItem() const { return m_showMenuBarItem.get(); }
    [[nodiscard]] bool launchAtLogin() const { return m_launchAtLogin.get(); }

    void setShowDockIcon(bool value);
    void setShowMenuBarItem(bool value);
    /// Goes back to the system's state when the system refuses.
    void setLaunchAtLogin(bool value);

    Observable<bool>& showDockIconValue() { return m_showDockIcon; }
    Observable<bool>& showMenuBarItemValue() { return m_showMenuBarItem; }
    Observable<bool>& launchAtLoginValue() { return m_launchAtLogin; }

private:
    DefaultsStore& m_defaults;
    Observable<bool> m_showDockIcon{false};
    Observable<bool> m_showMenuBarItem{true};
    Observable<bool> m_launchAtLogin{false};
    Cancellables m_cancellables;
};

} // namespace orvane
