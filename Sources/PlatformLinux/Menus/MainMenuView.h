// The main menu on a desktop without a menu bar of its own: its key equivalents work in every window of the
// program, after the window itself has had the key, and F10 opens it as a popup. Main thread.
#pragma once

#include "Platform/Menu.h"
#include "PlatformLinux/Menus/TrayMenuView.h"

#include <QObject>

#include <functional>
#include <memory>

class QWidget;

namespace orvane {

class MainMenuView : public QObject {
    Q_OBJECT
public:
    struct Commands {
        std::function<bool(QStringView selector)> isTaken;
        std::function<bool(QStringView selector)> send;
    };

    explicit MainMenuView(Commands commands) : m_commands(std::move(commands)) {}

    void setMenu(std::shared_ptr<Menu> menu);
    [[nodiscard]] std::shared_ptr<const Menu> menu() const { return m_menu; }
    void setWindowsMenu(std::shared_ptr<Menu> menu) { m_windowsMenu = std::move(menu); }

    /// Returns the popup's content at this moment: items that can't be chosen are disabled, and the windows
    /// are listed.
    [[nodiscard]] Menu rendered() const;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool choose(const Menu& menu, QKeyCombination key, int depth);
    bool choose(const MenuItem& item);
    [[nodiscard]] Menu rendered(const Menu& menu, int depth) const;
    void popUp(const QWidget& window);

    Commands m_commands;
    std::shared_ptr<Menu> m_menu;
    std::shared_ptr<Menu> m_windowsMenu;
    TrayMenuView m_popup;
};

} // namespace orvane
