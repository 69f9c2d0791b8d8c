#include "Desktop/Support/AccessibleTree.h"

#include "Desktop/Support/Bus.h"

#include <QDBusArgument>
#include <QDBusMessage>

#include <stdexcept>

namespace orvane::tests {

namespace {

constexpr int answerTime = 3000; // in milliseconds
constexpr quint32 screenCoordinates = 0;

const QString registry = QStringLiteral("org.a11y.atspi.Registry");
const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");

QString busAddress()
{
    const QDBusMessage answer = ask(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                    QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        throw std::runtime_error("there is no accessibility bus");
    return answer.arguments().constFirst().toString();
}

QVariant firstOf(const QDBusMessage& answer)
{
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0) : QVariant();
}

QString nextConnectionName()
{
    static int count = 0;
    return QStringLiteral("accessible-tree-%1").arg(++count);
}

} // namespace

AccessibleTree::AccessibleTree(qint64 pid)
    : m_pid(pid),
      m_connectionName(nextConnectionName()),
      m_bus(QDBusConnection::connectToBus(busAddress(), m_connectionName))
{
    if (!m_bus.isConnected())
        throw std::runtime_error("the accessibility bus refuses");
}

AccessibleTree::~AccessibleTree()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
}

QDBusMessage AccessibleTree::ask(const Reference& object, const char* interface, const char* method,
                                 const QVariantList& arguments) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(object.service, object.path, QLatin1String(interface),
                                                       QLatin1String(method));
    call.setArguments(arguments);
    return m_bus.call(call, QDBus::Block, answerTime);
}

QString AccessibleTree::text(const Reference& object, const char* property) const
{
    const QVariant value =
        firstOf(ask(object, "org.freedesktop.DBus.Properties", "Get",
                    {QStringLiteral("org.a11y.atspi.Accessible"), QLatin1String(property)}));
    return value.value<QDBusVariant>().variant().toString();
}

QList<AccessibleTree::Reference> AccessibleTree::children(const Reference& object) const
{
    const QVariant list = firstOf(ask(object, "org.a11y.atspi.Accessible", "GetChildren"));
    QList<Reference> found;
    if (!list.canConvert<QDBusArgument>())
        return found;
    const auto argument = list.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        Reference reference;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> reference.service >> path;
        argument.endStructure();
        reference.path = path.path();
        found.append(reference);
    }
    argument.endArray();
    return found;
}

std::optional<AccessibleTree::Reference> AccessibleTree::application() const
{
    const Reference daemon{QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus")};
    for (const Reference& candidate : children({registry, rootPath})) {
        const QVariant pid =
            firstOf(ask(daemon, "org.freedesktop.DBus", "GetConnectionUnixProcessID", {candidate.service}));
        if (pid.toLongLong() == m_pid)
            return candidate;
    }
    return std::nullopt;
}

AccessibleNode AccessibleTree::read(const Reference& object) const
{
    AccessibleNode node;
    node.service = object.service;
    node.path = object.path;
    node.role = firstOf(ask(object, "org.a11y.atspi.Accessible", "GetRoleName")).toString();
    node.name = text(object, "Name");
    node.description = text(object, "Description");
    const QVariant states = firstOf(ask(object, "org.a11y.atspi.Accessible", "GetState"));
    if (states.canConvert<QDBusArgument>()) {
        const auto words = qdbus_cast<QList<quint32>>(states);
        node.states = words.value(0) | quint64(words.value(1)) << 32;
    }
    const QVariant extents =
        firstOf(ask(object, "org.a11y.atspi.Component", "GetExtents", {screenCoordinates}));
    if (extents.canConvert<QDBusArgument>()) {
        int x = 0, y = 0, width = 0, height = 0;
        const auto argument = extents.value<QDBusArgument>();
        argument.beginStructure();
        argument >> x >> y >> width >> height;
        argument.endStructure();
        node.place = QRect(x, y, width, height);
    }
    return node;
}

void AccessibleTree::collect(const Reference& object, QList<AccessibleNode>& found) const
{
    for (const Reference& child : children(object)) {
        const AccessibleNode node = read(child);
        if (!node.isShowing())
            continue;
        found.append(node);
        collect(child, found);
    }
}

QList<AccessibleNode> AccessibleTree::nodes() const
{
    QList<AccessibleNode> found;
    if (const auto root = application())
        collect(*root, found);
    return found;
}

std::optional<AccessibleNode> AccessibleTree::find(const char* role, const QString& name) const
{
    for (const AccessibleNode& node : nodes()) {
        if (node.role == QLatin1String(role) && node.name == name)
            return node;
    }
    return std::nullopt;
}

std::optional<AccessibleNode> AccessibleTree::focused() const
{
    std::optional<AccessibleNode> found;
    bool listHasFocus = false;
    for (const AccessibleNode& node : nodes()) {
        if (node.role == QLatin1String("list"))
            listHasFocus = node.isFocused();
        // The current row reports the focus even while its list doesn't have it.
        const bool counts = node.role != QLatin1String("list item") || listHasFocus;
        if (node.isFocused() && counts)
            found = node;
    }
    return found;
}

} // namespace orvane::tests
