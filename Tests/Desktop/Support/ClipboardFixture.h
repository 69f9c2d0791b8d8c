// The built program with the clipboard history on, its panel, and its files on the disk.
#pragma once

#include "Desktop/Support/ShellFixture.h"
#include "Desktop/Support/Windows.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRect>
#include <QStringList>

#include <memory>
#include <optional>

namespace orvane::tests {

class ClipboardFixture : public ShellDesktopTest {
protected:
    struct Setup {
        QVariantMap settings = {}; // settings of the clipboard history
        QStringList others = {};   // further capabilities that are on
        QMap<QString, StoredShortcut> shortcuts = {};
        QVariantMap more = {};
        std::shared_ptr<PrivateHome> home = std::make_shared<PrivateHome>();
    };

    /// Starts with Control-Alt-V for the panel. Copies from then on are captured.
    void startHistory(const Setup& setup);
    void startHistory() { startHistory(Setup()); }
    /// Ends the program in order and starts it in the same home, with the settings that it has left.
    void restart();

    /// Copies in a program that isn't in front, and waits until the history has the copy.
    void copy(const QString& text);
    void copy(const QStringList& texts);

    [[nodiscard]] static QString historyFolder(const PrivateHome& home);
    [[nodiscard]] QString historyFile() const;
    [[nodiscard]] QString imagesFolder() const;
    /// Returns the list on the disk.
    [[nodiscard]] QJsonArray stored() const;
    /// Returns its entries, each as its kind, a colon and its text, with "*" in front of a pinned one.
    [[nodiscard]] QStringList storedEntries() const;
    [[nodiscard]] testing::AssertionResult historyBecomes(const QStringList& entries) const;

    /// Returns the panel's place in the root window without its shadow; nothing while it isn't shown.
    [[nodiscard]] std::optional<QRect> panelFrame() const;
    void pressShow() { chord({"Control_L", "Alt_L", "v"}); }
    /// Succeeds once the panel is shown and has the keyboard.
    [[nodiscard]] testing::AssertionResult openPanel();
    [[nodiscard]] bool panelCloses();
    /// Types lower-case letters and spaces.
    void type(const char* letters);
    /// Returns the panel's rows from top to bottom, as assistive technology reads them.
    [[nodiscard]] QStringList rows() const;
    [[nodiscard]] testing::AssertionResult rowsBecome(const QStringList& names) const;
    /// The entries of a row's context menu, in their order.
    enum class RowEntry { pin, remove };
    void chooseInRowMenu(const QString& row, RowEntry entry);

    Windows m_windows;

private:
    void waitUntilActive();
    [[nodiscard]] std::optional<ScreenWindow> shownPanel() const;
    /// Returns the frame without the shadow.
    [[nodiscard]] QRect frameOf(const ScreenWindow& window) const;
};

} // namespace orvane::tests
