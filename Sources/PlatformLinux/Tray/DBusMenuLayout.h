// A menu numbered for com.canonical.dbusmenu: its tree, the properties of each item, and the item behind
// each number. Pure; no bus needed.
#pragma once

#include "Platform/Menu.h"
#include "PlatformLinux/Tray/DBusMenuTypes.h"

#include <QColor>

#include <vector>

namespace orvane {

class DBusMenuLayout {
public:
    struct Node {
        /// The item without its submenu, which the children stand for.
        MenuItem item;
        QVariantMap properties;
        std::vector<int> children;
    };

    /// The root, number 0, without children.
    DBusMenuLayout();
    /// Numbers the items from `firstId` on; pictures are drawn in `imageColour`.
    DBusMenuLayout(const Menu& menu, int firstId, const QColor& imageColour);

    /// Null if the layout has no such item.
    [[nodiscard]] const Node* node(int id) const;
    [[nodiscard]] int firstId() const { return m_firstId; }
    /// One past the last number in use.
    [[nodiscard]] int endId() const { return m_firstId + static_cast<int>(m_nodes.size()) - 1; }

    /// True if the same titles stand at the same places, so that a number means the same in both layouts.
    /// Both have to be numbered from the same first id for the numbers to be equal.
    [[nodiscard]] bool matches(const DBusMenuLayout& other) const;
    [[nodiscard]] DBusMenuLayoutItem exported(int id, int depth, const QStringList& names) const;

    /// Numbers the items anew.
    void renumber(int firstId);

private:
    void append(int parent, const Menu& menu, int depth, const QColor& imageColour);
    [[nodiscard]] std::size_t index(int id) const;

    int m_firstId = 1;
    /// The root, then the items.
    std::vector<Node> m_nodes;
};

/// Returns the properties with these names; no names means all of them.
QVariantMap chosenProperties(const QVariantMap& properties, const QStringList& names);

} // namespace orvane
