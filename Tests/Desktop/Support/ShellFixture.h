// The built program with shortcuts, its status item and Awake as the thing that can be seen to act.
#pragma once

#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/Program.h"
#include "Desktop/Support/Screen.h"
#include "Desktop/Support/Tray.h"

#include <QMap>
#include <QStringList>

#include <initializer_list>
#include <memory>
#include <optional>

#include <gtest/gtest.h>

namespace orvane::tests {

/// What is stored under a name: a virtual key code and modifiers as the hot key service takes them.
struct StoredShortcut {
    int keyCode = 0;
    int modifiers = 0;
};

class ShellDesktopTest : public testing::Test {
protected:
    struct Stored {
        /// The last parts of the ids of the capabilities that are on.
        QStringList enabled = {};
        QMap<QString, StoredShortcut> shortcuts = {};
        QVariantMap more = {};
    };

    void SetUp() override;
    void TearDown() override;

    [[nodiscard]] static QByteArray defaults(const Stored& stored);
    /// Starts it, and waits until it owns its name.
    void start(const Stored& stored);
    [[nodiscard]] Program& program() { return *m_program; }

    /// The kinds of lock that Awake holds, joined; empty when it holds none.
    [[nodiscard]] static QString heldLocks();
    [[nodiscard]] static bool becomesAwake();
    [[nodiscard]] static bool becomesAsleep();
    [[nodiscard]] bool homeIsShown() const;

    /// Clicks on what has this name and role in the program's windows, once it stands still.
    [[nodiscard]] bool clickOn(const QString& name, const QString& role, Button button = Button::left);

    void press(std::initializer_list<const char*> keys);
    /// In the order given, as a hand that lets go of the modifiers first.
    void release(std::initializer_list<const char*> keys);
    /// Presses in order and lets go in the opposite one.
    void chord(std::initializer_list<const char*> keys);

    /// The suite's status item, once the panel knows it.
    [[nodiscard]] TrayItem statusItem();
    /// A click on it by the mouse; true once a menu is open.
    [[nodiscard]] bool openStatusMenu();
    /// What the status item exports when it is asked as a host does before it shows the menu.
    [[nodiscard]] MenuNode statusMenu();
    [[nodiscard]] bool menuIsOpen() const { return !m_screen.openMenus().isEmpty(); }
    [[nodiscard]] bool menusClose() const;

    Screen m_screen;
    Hardware m_hardware;
    Tray m_tray;
    std::unique_ptr<Program> m_program;

private:
    [[nodiscard]] std::optional<QRect> place(const TrayItem& item) const;
};

} // namespace orvane::tests
