// The built program with the clipboard history on, its panel, and what it keeps on the disk.
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
        QVariantMap settings = {}; // of the clipboard history
        QStringList others = {};   // capabilities that are on too
        QMap<QString, StoredShortcut> shortcuts = {};
        QVariantMap more = {};
        std::shared_ptr<PrivateHome> home = std::make_shared<PrivateHome>();
    };

    /// With Control-Alt-V for the panel. Copies from now on are captured.
    void startHistory(const Setup& setup);
    void startHistory() { startHistory(Setup()); }
    /// Ends it in order and starts it in the same home, with the settings that it has left.
    void restart();

    /// Copies by a program that isn't in front, and waits until the history has it.
    void copy(const QString& text);
    void copy(const QStringList& texts);

    [[nodiscard]] static QString historyFolder(const PrivateHome& home);
    [[nodiscard]] QString historyFile() const;
    [[nodiscard]] QString imagesFolder() const;
    /// The list as it is on the disk.
    [[nodiscard]] QJsonArray stored() const;
    /// Its entries, each as its kind, a colon and its text, with "*" in front of a pinned one.
    [[nodiscard]] QStringList storedEntries() const;
    [[nodiscard]] testing::AssertionResult historyBecomes(const QStringList& entries) const;

    /// Without its shadow, in the root window; nothing while it isn't shown.
    [[nodiscard]] std::optional<QRect> panelFrame() const;
    void pressShow() { chord({"Control_L", "Alt_L", "v"}); }
    /// True once it stands and has the keyboard.
    [[nodiscard]] testing::AssertionResult openPanel();
    [[nodiscard]] bool panelCloses();
    /// Letters without upper case, and spaces.
    void type(const char* letters);
    /// What the panel lists, as assistive technology reads it, from top to bottom.
    [[nodiscard]] QStringList rows() const;
    [[nodiscard]] testing::AssertionResult rowsBecome(const QStringList& names) const;
    /// In the order of a row's context menu.
    enum class RowEntry { pin, remove };
    void chooseInRowMenu(const QString& row, RowEntry entry);

    Windows m_windows;

private:
    void waitUntilActive();
    [[nodiscard]] std::optional<ScreenWindow> shownPanel() const;
    /// Without the shadow.
    [[nodiscard]] QRect frameOf(const ScreenWindow& window) const;
};

} // namespace orvane::tests
