#include "PlatformLinux/Tray/DBusMenuLayout.h"

#include "PlatformLinux/Menus/KeyEquivalent.h"
#include "PlatformLinux/Menus/MenuText.h"
#include "PlatformLinux/Menus/TemplateTint.h"
#include "PlatformLinux/Tray/PngPicture.h"
#include "PlatformLinux/X11/X11Connection.h"

#include <algorithm>

namespace orvane {

namespace {

/// Each level nests three containers, of which a message may hold 64; and a menu may contain itself.
constexpr int deepestLevel = 8;

QByteArray png(const TemplateImage& image, const QColor& colour)
{
    // Hosts scale it down to their own size of 16 points or so, without regard to its shape.
    constexpr QSize pixels(32, 32);
    return pngPicture(tinted(image, pixels, colour));
}

DBusMenuShortcut shortcutOf(const MenuItem& item)
{
    const auto combination = keyCombination(item);
    if (!combination)
        return {};
    const QByteArray name = keysymName(item.keyEquivalent.front().toLower().unicode());
    if (name.isEmpty())
        return {};
    const Qt::KeyboardModifiers modifiers = combination->keyboardModifiers();
    QStringList keys;
    if (modifiers.testFlag(Qt::ControlModifier))
        keys.append(QStringLiteral("Control"));
    if (modifiers.testFlag(Qt::MetaModifier))
        keys.append(QStringLiteral("Super"));
    if (modifiers.testFlag(Qt::AltModifier))
        keys.append(QStringLiteral("Alt"));
    if (modifiers.testFlag(Qt::ShiftModifier))
        keys.append(QStringLiteral("Shift"));
    return {keys << QString::fromLatin1(name)};
}

/// Absent properties have the protocol's default: enabled, visible, no check mark.
QVariantMap propertiesOf(const MenuItem& item, const QColor& imageColour)
{
    if (item.kind == MenuItem::Kind::separator)
        return {{QStringLiteral("type"), QStringLiteral("separator")}};

    QVariantMap map{{QStringLiteral("label"), dbusMenuLabel(item.title)}};
    if (!item.enabled || item.view || (!item.action && !item.submenu))
        map[QStringLiteral("enabled")] = false;
    // An item that is off shows no box: most items never have a check mark.
    if (item.state == MenuItem::State::on) {
        map[QStringLiteral("toggle-type")] = QStringLiteral("checkmark");
        map[QStringLiteral("toggle-state")] = 1;
    }
    // The protocol can carry only the title of a view: an icon is a small square.
    if (item.image)
        map[QStringLiteral("icon-data")] = png(*item.image, imageColour);
    const DBusMenuShortcut shortcut = shortcutOf(item);
    if (!shortcut.isEmpty())
        map[QStringLiteral("shortcut")] = QVariant::fromValue(shortcut);
    if (item.submenu)
        map[QStringLiteral("children-display")] = QStringLiteral("submenu");
    return map;
}

} // namespace

DBusMenuLayout::DBusMenuLayout() : m_nodes(1)
{
    m_nodes.front().properties[QStringLiteral("children-display")] = QStringLiteral("submenu");
}

DBusMenuLayout::DBusMenuLayout(const Menu& menu, int firstId, const QColor& imageColour) : DBusMenuLayout()
{
    m_firstId = firstId;
    append(0, menu, 1, imageColour);
}

void DBusMenuLayout::append(int parent, const Menu& menu, int depth, const QColor& imageColour)
{
    for (const MenuItem& item : menu.items) {
        const int id = endId();
        Node node{item, propertiesOf(item, imageColour), {}};
        node.item.submenu.reset();
        m_nodes.push_back(std::move(node));
        m_nodes[index(parent)].children.push_back(id);
        if (item.submenu && depth < deepestLevel)
            append(id, *item.submenu, depth + 1, imageColour);
    }
}

std::size_t DBusMenuLayout::index(int id) const
{
    return id == 0 ? 0 : static_cast<std::size_t>(id - m_firstId + 1);
}

const DBusMenuLayout::Node* DBusMenuLayout::node(int id) const
{
    if (id != 0 && (id < m_firstId || id >= endId()))
        return nullptr;
    return &m_nodes[index(id)];
}

bool DBusMenuLayout::matches(const DBusMenuLayout& other) const
{
    const auto sameChildren = [&](const Node& a, const Node& b) {
        return std::equal(a.children.begin(), a.children.end(), b.children.begin(), b.children.end(),
                          [&](int x, int y) { return x - m_firstId == y - other.m_firstId; });
    };
    return std::equal(m_nodes.begin(), m_nodes.end(), other.m_nodes.begin(), other.m_nodes.end(),
                      [&](const Node& a, const Node& b) {
                          // Panels don't remove a check mark's box, so an item that loses it counts as
                          // another item.
                          return a.item.kind == b.item.kind && a.item.title == b.item.title &&
                                 a.item.state == b.item.state && sameChildren(a, b);
                      });
}

void DBusMenuLayout::renumber(int firstId)
{
    for (Node& node : m_nodes) {
        for (int& child : node.children)
            child += firstId - m_firstId;
    }
    m_firstId = firstId;
}

DBusMenuLayoutItem DBusMenuLayout::exported(int id, int depth, const QStringList& names) const
{
    const Node& from = m_nodes[index(id)];
    DBusMenuLayoutItem item{id, chosenProperties(from.properties, names), {}};
    if (depth != 0) {
        for (const int child : from.children)
            item.children.push_back(exported(child, depth < 0 ? -1 : depth - 1, names));
    }
    return item;
}

QVariantMap chosenProperties(const QVariantMap& properties, const QStringList& names)
{
    if (names.isEmpty())
        return properties;
    QVariantMap chosen;
    for (const QString& name : names) {
        if (const auto it = properties.find(name); it != properties.end())
            chosen.insert(it.key(), *it);
    }
    return chosen;
}

} // namespace orvane
