#include "Desktop/Support/Tray.h"

#include "Desktop/Support/Bus.h"
#include "Desktop/Support/Hardware.h"
#include "Desktop/Support/OtherClient.h"
#include "Desktop/Support/Screen.h"
#include "Support/Eventually.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace orvane::tests {

namespace {

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");

// A watcher names an item "service/path", or by its service alone, with the usual path.
TrayItem parseName(const QString& name)
{
    const qsizetype slash = name.indexOf(u'/');
    TrayItem item;
    item.service = name.left(slash);
    item.path = slash < 0 ? QStringLiteral("/StatusNotifierItem") : name.mid(slash);
    return item;
}

/// Returns the title of a tool tip: (icon name, pictures, title, text).
QString readToolTip(const QVariant& value)
{
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(sa(iiay)ss)"))
        return {};
    QString iconName, title;
    argument.beginStructure();
    argument >> iconName;
    argument.beginArray();
    while (!argument.atEnd()) {
        int width = 0, height = 0;
        QByteArray pixels;
        argument.beginStructure();
        argument >> width >> height >> pixels;
        argument.endStructure();
    }
    argument.endArray();
    QString text;
    argument >> title >> text;
    argument.endStructure();
    return title;
}

void readProperties(TrayItem& item)
{
    const QDBusMessage answer =
        ask(item.service, item.path, QStringLiteral("org.freedesktop.DBus.Properties"),
            QStringLiteral("GetAll"), {itemInterface});
    if (answer.type() != QDBusMessage::ReplyMessage)
        return;
    const auto properties = qdbus_cast<QVariantMap>(answer.arguments().constFirst());
    item.id = properties.value(QStringLiteral("Id")).toString();
    item.title = properties.value(QStringLiteral("Title")).toString();
    item.toolTip = readToolTip(properties.value(QStringLiteral("ToolTip")));
    item.status = properties.value(QStringLiteral("Status")).toString();
    item.menuPath = properties.value(QStringLiteral("Menu")).value<QDBusObjectPath>().path();
    item.isMenu = properties.value(QStringLiteral("ItemIsMenu")).toBool();
}

/// Returns the Ids of all items that the panel has ever shown, in the order in which it shows them.
QStringList panelOrder()
{
    // The number of the plug-in is set in Tools/desktop/xfce4-panel.xml.
    const QDBusMessage answer =
        ask(QStringLiteral("org.xfce.Xfconf"), QStringLiteral("/org/xfce/Xfconf"),
            QStringLiteral("org.xfce.Xfconf"), QStringLiteral("GetProperty"),
            {QStringLiteral("xfce4-panel"), QStringLiteral("/plugins/plugin-3/known-items")});
    QStringList order;
    if (answer.type() == QDBusMessage::ReplyMessage) {
        const QVariant value = answer.arguments().constFirst().value<QDBusVariant>().variant();
        for (const QVariant& id : qdbus_cast<QVariantList>(value))
            order.append(id.toString());
    }
    return order;
}

/// Returns the window in which the panel draws its status area.
std::optional<QRect> statusArea(const Screen& screen)
{
    // The area is not in the accessibility tree, and its items have no windows.
    for (const ScreenWindow& window : screen.windowsOf(processOnSessionBus(watcher))) {
        if (window.type != WindowType::menu && window.parent != screen.root())
            return window.geometry;
    }
    return std::nullopt;
}

/// Selects an entry of the open menu by keys.
void walkTo(Hardware& hardware, const MenuNode& menu, const MenuNode& wanted)
{
    hardware.tap("Home"); // the first that can be selected
    for (const MenuNode* child = menu.children.constData(); child != &wanted; ++child) {
        if (child->selectable())
            hardware.tap("Down");
    }
}

} // namespace

QList<TrayItem> Tray::items() const
{
    const QStringList names = property(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher,
                                       QStringLiteral("RegisteredStatusNotifierItems"))
                                  .toStringList();
    QList<TrayItem> items;
    for (const QString& name : names) {
        TrayItem item = parseName(name);
        // The panel keeps the name of an item whose program ended at the very moment of its registration.
        item.pid = processOnSessionBus(item.service);
        if (item.pid == 0)
            continue;
        readProperties(item);
        items.append(item);
    }
    return items;
}

QList<TrayItem> Tray::itemsOf(qint64 pid) const
{
    QList<TrayItem> found = items();
    found.removeIf([pid](const TrayItem& item) { return item.pid != pid; });
    return found;
}

std::optional<TrayItem> Tray::find(const QString& text) const
{
    QList<TrayItem> found = items();
    found.removeIf(
        [&](const TrayItem& item) { return item.id != text && item.title != text && item.toolTip != text; });
    if (found.size() != 1)
        return std::nullopt;
    return found.constFirst();
}

std::optional<QRect> Tray::place(const Screen& screen, const TrayItem& item) const
{
    QStringList shown;
    for (const TrayItem& other : items()) {
        if (shown.contains(other.id))
            return std::nullopt;
        shown.append(other.id);
    }
    QStringList order = panelOrder();
    order.removeIf([&](const QString& id) { return !shown.contains(id); });

    // The places are squares side by side, and the area is a pixel wider than they are.
    const std::optional<QRect> area = statusArea(screen);
    const qsizetype index = order.indexOf(item.id);
    if (!area || index < 0 || order.size() != shown.size())
        return std::nullopt;
    const int side = area->height();
    const int width = side * static_cast<int>(order.size());
    if (std::abs(area->width() - width) > 2)
        return std::nullopt;
    return QRect(area->x() + static_cast<int>(index) * side, area->y(), side, side);
}

bool chooseInOpenMenu(const Screen& screen, Hardware& hardware, const MenuNode& menu,
                      const QStringList& labels)
{
    const MenuNode* node = &menu;
    OtherClient server;
    if (!eventually(10s, [&] { return !screen.openMenus().isEmpty() && server.isKeyboardGrabbed(); }))
        return false;
    const qsizetype openBefore = screen.openMenus().size();
    for (qsizetype depth = 0; depth < labels.size(); ++depth) {
        const MenuNode* wanted = node->find({labels[depth]});
        if (!wanted || !wanted->selectable())
            return false;
        const bool last = depth + 1 == labels.size();
        const auto done = [&] {
            const qsizetype open = screen.openMenus().size();
            return last ? open < openBefore + depth : open == openBefore + depth + 1;
        };
        // The selection is lost when the menu's content is replaced while it is open; a person would try
        // again.
        bool isDone = false;
        for (int attempt = 0; attempt < 4 && !isDone; ++attempt) {
            walkTo(hardware, *node, *wanted);
            hardware.tap(last ? "Return" : "Right");
            isDone = eventually(4s, done);
        }
        if (!isDone)
            return false;
        node = wanted;
    }
    return !labels.isEmpty();
}

bool closeMenus(const Screen& screen, Hardware& hardware)
{
    return eventually(10s, [&] {
        if (screen.openMenus().isEmpty())
            return true;
        hardware.tap("Escape");
        return eventually(2s, [&] { return screen.openMenus().isEmpty(); });
    });
}

} // namespace orvane::tests
