#include "Desktop/Support/ShellFixture.h"

#include "Desktop/Support/AccessibleTree.h"
#include "Desktop/Support/Logind.h"
#include "Desktop/Support/OtherClient.h"
#include "Support/Eventually.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <iterator>
#include <utility>

namespace orvane::tests {

void ShellDesktopTest::SetUp()
{
    ASSERT_TRUE(becomesAsleep()) << "something of an earlier test is held";
}

void ShellDesktopTest::TearDown()
{
    EXPECT_TRUE(closeMenus(m_screen, m_hardware)) << "a menu stays open";
    m_program.reset();
    OtherClient client;
    EXPECT_TRUE(eventually(10s, [&] { return client.keysDown().isEmpty(); })) << "keys are left pressed";
}

QByteArray ShellDesktopTest::defaults(const Stored& stored)
{
    QVariantMap all = stored.more;
    all[QStringLiteral("hasOnboarded")] = true;
    QVariantMap enabled;
    for (const QString& capability : stored.enabled)
        enabled[QStringLiteral("net.lindenrow.orvane.") + capability] = true;
    all[QStringLiteral("Orvane.enabledCapabilities")] = enabled;
    for (auto it = stored.shortcuts.begin(); it != stored.shortcuts.end(); ++it) {
        all[QStringLiteral("KeyboardShortcuts_") + it.key()] =
            QStringLiteral("{\"carbonKeyCode\":%1,\"carbonModifiers\":%2}")
                .arg(it->keyCode)
                .arg(it->modifiers);
    }
    return QJsonDocument(QJsonObject::fromVariantMap(all)).toJson();
}

void ShellDesktopTest::start(const Stored& stored)
{
    m_program = std::make_unique<Program>(Program::Start{.defaults = defaults(stored)});
    ASSERT_TRUE(m_program->waitUntilReady());
}

QString ShellDesktopTest::heldLocks()
{
    QStringList locks;
    for (const Inhibitor& inhibitor : inhibitors().value_or(QList<Inhibitor>())) {
        if (inhibitor.why == QStringLiteral("Orvane Awake"))
            locks.append(inhibitor.what);
    }
    return locks.join(QLatin1Char(' '));
}

bool ShellDesktopTest::becomesAwake()
{
    return eventually(10s, [] { return heldLocks() == QStringLiteral("idle"); });
}

bool ShellDesktopTest::becomesAsleep()
{
    return eventually(10s, [] { return heldLocks().isEmpty(); });
}

bool ShellDesktopTest::homeIsShown() const
{
    return m_screen.window(m_program->pid(), QStringLiteral("Orvane")).has_value();
}

bool ShellDesktopTest::clickOn(const QString& name, const QString& role, Button button)
{
    const AccessibleTree tree(m_program->pid());
    QStringList seen;
    QRect last;
    const bool isThere = eventually(10s, [&] {
        const QRect before = std::exchange(last, QRect());
        seen.clear();
        for (const AccessibleNode& node : tree.nodes()) {
            seen.append(node.role + QStringLiteral(" ") + node.name);
            if (last.isEmpty() && node.name == name && node.role == role)
                last = node.place;
        }
        return !last.isEmpty() && before == last;
    });
    EXPECT_TRUE(isThere) << "no " << role.toStdString() << " \"" << name.toStdString() << "\" among\n"
                         << seen.join(QLatin1Char('\n')).toStdString();
    if (isThere)
        m_hardware.click(last.center(), button);
    return isThere;
}

void ShellDesktopTest::press(std::initializer_list<const char*> keys)
{
    for (const char* key : keys)
        m_hardware.press(key);
}

void ShellDesktopTest::release(std::initializer_list<const char*> keys)
{
    for (const char* key : keys)
        m_hardware.release(key);
}

void ShellDesktopTest::chord(std::initializer_list<const char*> keys)
{
    press(keys);
    for (auto key = std::rbegin(keys); key != std::rend(keys); ++key)
        m_hardware.release(*key);
}

TrayItem ShellDesktopTest::statusItem()
{
    std::optional<TrayItem> found;
    EXPECT_TRUE(eventually(10s, [&] {
        for (const TrayItem& item : m_tray.itemsOf(m_program->pid())) {
            if (item.toolTip == QStringLiteral("Orvane"))
                found = item;
        }
        return found.has_value();
    })) << "the status item isn't there";
    return found.value_or(TrayItem());
}

std::optional<QRect> ShellDesktopTest::place(const TrayItem& item) const
{
    // An item that comes later moves the others.
    QList<QRect> places;
    for (const TrayItem& each : m_tray.itemsOf(m_program->pid())) {
        const auto found = m_tray.place(m_screen, each);
        if (!found || places.contains(*found))
            return std::nullopt;
        places.append(*found);
    }
    return m_tray.place(m_screen, item);
}

bool ShellDesktopTest::openStatusMenu()
{
    const TrayItem item = statusItem();
    if (!menusClose()) // a menu that is still closing would take the click
        return false;
    std::optional<QRect> last;
    if (!eventually(10s, [&] {
            const auto before = std::exchange(last, place(item));
            return last && before == last;
        }))
        return false;
    m_hardware.click(last->center(), Button::left);
    return eventually(10s, [&] { return menuIsOpen(); });
}

MenuNode ShellDesktopTest::statusMenu()
{
    const DBusMenu menu = statusItem().menu();
    (void)menu.aboutToShow();
    return menu.layout().value_or(MenuNode());
}

bool ShellDesktopTest::menusClose() const
{
    return eventually(10s, [&] { return !menuIsOpen(); });
}

} // namespace orvane::tests
