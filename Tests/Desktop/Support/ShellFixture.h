// The built program with shortcuts, its status item, and Awake as the feature whose effect can be seen.
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

/// A stored shortcut: a virtual key code and modifiers as the hot key service takes them.
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
    /// Starts the program and waits until it owns its name.
    void start(const Stored& stored);
    [[nodiscard]] Program& program() { return *m_program; }

    /// Returns the kinds of lock that Awake holds, joined; empty when it holds none.
    [[nodiscard]] static QString heldLocks();
    [[nodiscard]] static bool becomesAwake();
    [[nodiscard]] static bool becomesAsleep();
    [[nodiscard]] bool homeIsShown() const;

    /// Clicks on the element with this name and role in the program's windows, once it stands still.
    [[nodiscard]] bool clickOn(const QString& name, const QString& role, Button button = Button::left);

    void press(std::initializer_list<const char*> keys);
    /// Releases the keys in the given order, as a person does who lets the modifiers go first.
    void release(std::initializer_list<const char*> keys);
    /// Presses in order and releases in the opposite order.
    void chord(std::initializer_list<const char*> keys);

    /// Returns the suite's status item once the panel knows it.
    [[nodiscard]] TrayItem statusItem();
    /// Clicks on it with the mouse; true once a menu is open.
    [[nodiscard]] bool openStatusMenu();
    /// Returns what the status item exports when it is asked as a host does before it shows the menu.
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
