// A status item with a menu, as Qt makes one, for tests of the tools that look at status items. Prints on
// standard error what is done to it.
#include <QApplication>
#include <QDBusConnection>
#include <QFile>
#include <QMenu>
#include <QSystemTrayIcon>

#include <cstdio>

#include <unistd.h>

namespace {

void say(const QString& text)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

void fill(QMenu& menu)
{
    const auto add = [](QMenu& to, const QString& label) {
        return to.addAction(label, [label] { say(u"chosen " + label); });
    };
    add(menu, QStringLiteral("First"));
    QAction* checked = add(menu, QStringLiteral("Checked"));
    checked->setCheckable(true);
    checked->setChecked(true);
    menu.addSeparator();
    add(menu, QStringLiteral("Off"))->setEnabled(false);
    QMenu* more = menu.addMenu(QStringLiteral("More"));
    add(*more, QStringLiteral("Shallow"));
    add(*more, QStringLiteral("Deep"))->setText(QStringLiteral("&Deep"));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QFile defaults(qEnvironmentVariable("XDG_CONFIG_HOME") + QLatin1String("/orvane/defaults.json"));
    say(QString::fromLatin1(isatty(STDERR_FILENO) ? "a terminal" : "no terminal"));
    say(u"defaults " + (defaults.open(QFile::ReadOnly) ? QString::fromUtf8(defaults.readAll()) : QString()));

    QPixmap square(22, 22);
    square.fill(Qt::darkGreen);
    QMenu menu;
    fill(menu);
    QSystemTrayIcon icon{QIcon(square)};
    icon.setToolTip(QStringLiteral("A peer"));
    icon.setContextMenu(&menu);
    QObject::connect(&icon, &QSystemTrayIcon::activated, [](QSystemTrayIcon::ActivationReason reason) {
        say(reason == QSystemTrayIcon::Trigger ? QStringLiteral("left click")
                                               : QStringLiteral("other click"));
    });
    icon.show();
    QDBusConnection::sessionBus().registerService(QStringLiteral("net.lindenrow.orvane.TrayPeer"));
    return QApplication::exec();
}
