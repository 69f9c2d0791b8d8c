// A menu that a program exports as com.canonical.dbusmenu, read and used as a panel does.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace orvane::tests {

struct MenuNode {
    enum class Toggle { none, checkmark, radio };

    int id = 0;
    QString label; // the label as it is shown, without the marks of mnemonics
    bool enabled = true;
    bool visible = true;
    bool separator = false;
    Toggle toggle = Toggle::none;
    bool on = false;
    QVariantMap properties; // all properties, as they were sent
    QList<MenuNode> children;

    /// True if a person can move to it.
    [[nodiscard]] bool selectable() const { return enabled && visible && !separator; }
    /// Returns the node under these labels; null when one of them isn't there.
    [[nodiscard]] const MenuNode* find(const QStringList& labels) const;
    /// Returns the labels of the visible children, "-" for a separator.
    [[nodiscard]] QStringList labels() const;
};

class DBusMenu {
public:
    DBusMenu(QString service, QString path) : m_service(std::move(service)), m_path(std::move(path)) {}

    /// Returns the tree under a node, with children of all depths. Nothing when the menu doesn't answer.
    [[nodiscard]] std::optional<MenuNode> layout(int parent = 0) const;
    /// Announces that a node's children are about to be shown. True if the layout must be asked for again;
    /// nothing when the menu doesn't answer.
    [[nodiscard]] std::optional<bool> aboutToShow(int id = 0) const;
    /// True if the event was taken.
    [[nodiscard]] bool click(int id) const;

private:
    QString m_service;
    QString m_path;
};

} // namespace orvane::tests
