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
    QString label; // as it is shown: without the marks of mnemonics
    bool enabled = true;
    bool visible = true;
    bool separator = false;
    Toggle toggle = Toggle::none;
    bool on = false;
    QVariantMap properties; // all, as they came
    QList<MenuNode> children;

    /// Whether a person can move to it.
    [[nodiscard]] bool selectable() const { return enabled && visible && !separator; }
    /// The node under these labels; null when one of them isn't there.
    [[nodiscard]] const MenuNode* find(const QStringList& labels) const;
    /// The labels of the children that can be seen, "-" for a separator.
    [[nodiscard]] QStringList labels() const;
};

class DBusMenu {
public:
    DBusMenu(QString service, QString path) : m_service(std::move(service)), m_path(std::move(path)) {}

    /// The tree under a node, whose children it has to all depths. Nothing when the menu doesn't answer.
    [[nodiscard]] std::optional<MenuNode> layout(int parent = 0) const;
    /// Announces that a node's children are about to be shown. Whether the layout must be asked for again;
    /// nothing when the menu doesn't answer.
    std::optional<bool> aboutToShow(int id = 0) const;
    /// Whether the event was taken.
    bool click(int id) const;

private:
    QString m_service;
    QString m_path;
};

} // namespace orvane::tests
