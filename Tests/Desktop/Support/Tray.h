// The status area of the panel: its registered items, and the place of each on the screen, so that it can be
// clicked as a person does.
#pragma once

#include "Desktop/Support/DBusMenu.h"

#include <QList>
#include <QRect>
#include <QString>

#include <optional>

namespace orvane::tests {

class Hardware;
class Screen;

struct TrayItem {
    QString service;
    QString path;
    qint64 pid = 0;
    QString id;
    QString title;
    QString toolTip; // the title of the tool tip
    QString status;
    QString menuPath;
    bool isMenu = false;

    [[nodiscard]] DBusMenu menu() const { return {service, menuPath}; }
};

class Tray {
public:
    /// Asks the StatusNotifierWatcher, and each item. Empty when there is no watcher.
    [[nodiscard]] QList<TrayItem> items() const;
    [[nodiscard]] QList<TrayItem> itemsOf(qint64 pid) const;
    /// Returns the one item of this Id, title or tool tip; nothing when there is none or there are several.
    [[nodiscard]] std::optional<TrayItem> find(const QString& text) const;

    /// Returns the place where the panel shows an item. Nothing while it isn't laid out yet, when its Id
    /// isn't unique, or when icons of the XEmbed tray share the area.
    [[nodiscard]] std::optional<QRect> place(const Screen& screen, const TrayItem& item) const;
};

/// Chooses an entry of a status item's menu that the panel has open, by keys. `menu` is what the item
/// exports, `labels` the path to the entry. True once the choice has closed the menu; false when the entry
/// isn't there, can't be chosen or a submenu doesn't open.
[[nodiscard]] bool chooseInOpenMenu(const Screen& screen, Hardware& hardware, const MenuNode& menu,
                                    const QStringList& labels);

/// Leaves every open menu by keys. False when one stays.
[[nodiscard]] bool closeMenus(const Screen& screen, Hardware& hardware);

} // namespace orvane::tests
