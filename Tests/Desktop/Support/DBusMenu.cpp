#include "Desktop/Support/DBusMenu.h"

#include "Desktop/Support/Bus.h"

#include <QDBusArgument>
#include <QDBusVariant>

#include <algorithm>

namespace orvane::tests {

namespace {

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

// An underscore marks the next letter as the mnemonic; two stand for one.
QString withoutMnemonics(const QString& text)
{
    QString shown;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'_' && ++i == text.size())
            break;
        shown.append(text[i]);
    }
    return shown;
}

void readProperties(MenuNode& node)
{
    const auto text = [&](const char* name) { return node.properties.value(QLatin1String(name)).toString(); };
    const auto truth = [&](const char* name) {
        return node.properties.value(QLatin1String(name), true).toBool(); // the protocol's default
    };
    node.label = withoutMnemonics(text("label"));
    node.enabled = truth("enabled");
    node.visible = truth("visible");
    node.separator = text("type") == QLatin1String("separator");
    if (text("toggle-type") == QLatin1String("checkmark"))
        node.toggle = MenuNode::Toggle::checkmark;
    else if (text("toggle-type") == QLatin1String("radio"))
        node.toggle = MenuNode::Toggle::radio;
    node.on = node.properties.value(QStringLiteral("toggle-state"), -1).toInt() == 1;
}

MenuNode readNode(const QDBusArgument& argument)
{
    MenuNode node;
    argument.beginStructure();
    argument >> node.id >> node.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        node.children.append(readNode(child.variant().value<QDBusArgument>()));
    }
    argument.endArray();
    argument.endStructure();
    readProperties(node);
    return node;
}

} // namespace

const MenuNode* MenuNode::find(const QStringList& labels) const
{
    const MenuNode* node = this;
    for (const QString& step : labels) {
        const auto child = std::find_if(node->children.cbegin(), node->children.cend(),
                                        [&](const MenuNode& it) { return it.label == step; });
        if (child == node->children.cend())
            return nullptr;
        node = &*child;
    }
    return node;
}

QStringList MenuNode::labels() const
{
    QStringList texts;
    for (const MenuNode& child : children) {
        if (child.visible)
            texts.append(child.separator ? QStringLiteral("-") : child.label);
    }
    return texts;
}

std::optional<MenuNode> DBusMenu::layout(int parent) const
{
    const QDBusMessage answer =
        ask(m_service, m_path, menuInterface, QStringLiteral("GetLayout"), {parent, -1, QStringList()});
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != QLatin1String("u(ia{sv}av)"))
        return std::nullopt;
    return readNode(answer.arguments().at(1).value<QDBusArgument>());
}

std::optional<bool> DBusMenu::aboutToShow(int id) const
{
    const QDBusMessage answer = ask(m_service, m_path, menuInterface, QStringLiteral("AboutToShow"), {id});
    if (answer.type() != QDBusMessage::ReplyMessage)
        return std::nullopt;
    return answer.arguments().constFirst().toBool();
}

bool DBusMenu::click(int id) const
{
    const QDBusMessage answer =
        ask(m_service, m_path, menuInterface, QStringLiteral("Event"),
            {id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), quint32(0)});
    return answer.type() == QDBusMessage::ReplyMessage;
}

} // namespace orvane::tests
