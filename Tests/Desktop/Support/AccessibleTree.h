// A program as assistive technology sees it, asked over the accessibility bus anew at each call.
#pragma once

#include <QDBusConnection>
#include <QList>
#include <QRect>
#include <QString>

#include <optional>

namespace orvane::tests {

struct AccessibleNode {
    QString service;
    QString path;
    QString role; // as AT-SPI names it: "check box", "push button", "list item"
    QString name;
    QString description;
    quint64 states = 0;
    QRect place; // in the root window

    [[nodiscard]] bool isChecked() const { return has(4); }
    [[nodiscard]] bool isEnabled() const { return has(8); }
    [[nodiscard]] bool isFocused() const { return has(12); }
    [[nodiscard]] bool isSelected() const { return has(23); }
    [[nodiscard]] bool isShowing() const { return has(25); }

private:
    [[nodiscard]] bool has(int state) const { return (states >> state) & 1; }
};

class AccessibleTree {
public:
    /// Throws std::runtime_error when there is no accessibility bus.
    explicit AccessibleTree(qint64 pid);
    ~AccessibleTree();
    AccessibleTree(const AccessibleTree&) = delete;
    AccessibleTree& operator=(const AccessibleTree&) = delete;

    /// Returns all elements that are shown, depth first. Empty while the program isn't on the bus.
    [[nodiscard]] QList<AccessibleNode> nodes() const;
    /// Returns the first element of this role and name.
    [[nodiscard]] std::optional<AccessibleNode> find(const char* role, const QString& name) const;
    /// Returns the element with the focus.
    [[nodiscard]] std::optional<AccessibleNode> focused() const;

private:
    struct Reference {
        QString service;
        QString path;
    };

    [[nodiscard]] QDBusMessage ask(const Reference& object, const char* interface, const char* method,
                                   const QVariantList& arguments = {}) const;
    [[nodiscard]] QString text(const Reference& object, const char* property) const;
    [[nodiscard]] QList<Reference> children(const Reference& object) const;
    [[nodiscard]] std::optional<Reference> application() const;
    [[nodiscard]] AccessibleNode read(const Reference& object) const;
    void collect(const Reference& object, QList<AccessibleNode>& found) const;

    qint64 m_pid;
    QString m_connectionName;
    QDBusConnection m_bus;
};

} // namespace orvane::tests
