// Every system symbol that is named anywhere has its picture.
#include "OrvaneKit/Theme/SystemSymbol.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

using namespace orvane;

namespace {

QString sources()
{
    return QStringLiteral(ORVANE_SOURCES);
}

/// Returns the first parts of dotted names that aren't symbols: domains, and the actions of the capabilities.
QSet<QString> foreignPrefixes()
{
    QSet<QString> prefixes;
    for (const char* prefix : {"app", "com", "general", "io", "net", "org", "orvane"})
        prefixes.insert(QLatin1String(prefix));
    const QDir capabilities(sources() + QStringLiteral("/Capabilities"));
    for (const QString& folder : capabilities.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        prefixes.insert(folder.toLower());
    return prefixes;
}

/// Returns the names in the sources without the platform layers: all dotted names, and plain words where the
/// text before them speaks of a symbol.
QSet<QString> namesInSources()
{
    static const QRegularExpression dotted(QStringLiteral("\"([a-z][a-z0-9]*(?:\\.[a-z0-9]+)+)\""));
    static const QRegularExpression plain(QStringLiteral(
        "(?:[sS]ymbol|systemImage|actionItem\\()[^;]{0,120}?QStringLiteral\\(\"([a-z][a-z0-9]*)\"\\)"));
    const QSet<QString> foreign = foreignPrefixes();
    QSet<QString> names;
    QDirIterator files(sources(), {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.fileName().contains(QStringLiteral("/Platform")) || !file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        for (const QRegularExpression& pattern : {dotted, plain}) {
            auto matches = pattern.globalMatch(text);
            while (matches.hasNext()) {
                const QString name = matches.next().captured(1);
                if (SystemSymbol::exists(name) || !foreign.contains(name.section(QLatin1Char('.'), 0, 0)))
                    names.insert(name);
            }
        }
    }
    return names;
}

} // namespace

TEST(SymbolNames, NoneThatTheSourcesNameIsMissing)
{
    const QSet<QString> names = namesInSources();
    // The search itself has to work.
    for (const char* known : {"switch.2", "macwindow", "power", "eye.fill", "app.badge"})
        EXPECT_TRUE(names.contains(QLatin1String(known))) << known;
    for (const QString& name : names)
        EXPECT_TRUE(SystemSymbol::exists(name)) << qPrintable(name);
}

TEST(SymbolNames, TheFamilyIsWhole)
{
    for (const char* name : {"app.badge",
                             "apple.logo",
                             "arrow.clockwise.circle",
                             "arrow.down.doc",
                             "arrow.down.right.and.arrow.up.left",
                             "arrow.right",
                             "arrow.right.doc.on.clipboard",
                             "arrow.triangle.2.circlepath",
                             "arrow.up.forward.app",
                             "arrow.uturn.backward",
                             "checkmark",
                             "checkmark.circle",
                             "checkmark.circle.fill",
                             "chevron.left",
                             "chevron.right",
                             "circle",
                             "clock.arrow.circlepath",
                             "command",
                             "cursorarrow.rays",
                             "display.2",
                             "doc.badge.plus",
                             "doc.on.clipboard",
                             "doc.on.doc",
                             "doc.plaintext",
                             "dot.viewfinder",
                             "exclamationmark.octagon.fill",
                             "exclamationmark.triangle",
                             "exclamationmark.triangle.fill",
                             "externaldrive",
                             "eye",
                             "eye.fill",
                             "eye.slash",
                             "eyedropper.halffull",
                             "folder",
                             "gearshape",
                             "hand.draw",
                             "info.circle",
                             "keyboard",
                             "line.3.horizontal.decrease.circle",
                             "link",
                             "list.bullet",
                             "lock.fill",
                             "lock.shield",
                             "macwindow",
                             "macwindow.on.rectangle",
                             "magnifyingglass",
                             "menubar.arrow.up.rectangle",
                             "menubar.rectangle",
                             "minus.circle",
                             "number",
                             "pause.circle",
                             "photo",
                             "photo.artframe",
                             "photo.on.rectangle.angled",
                             "pin.fill",
                             "plus",
                             "plus.magnifyingglass",
                             "plus.viewfinder",
                             "power",
                             "rectangle.bottomhalf.filled",
                             "rectangle.center.inset.filled",
                             "rectangle.fill",
                             "rectangle.inset.bottomleft.filled",
                             "rectangle.inset.bottomright.filled",
                             "rectangle.inset.topleft.filled",
                             "rectangle.inset.topright.filled",
                             "rectangle.lefthalf.filled",
                             "rectangle.on.rectangle",
                             "rectangle.righthalf.filled",
                             "rectangle.split.2x1",
                             "rectangle.split.2x2",
                             "rectangle.tophalf.filled",
                             "scissors",
                             "slider.horizontal.3",
                             "square.dashed",
                             "square.grid.2x2",
                             "switch.2",
                             "terminal",
                             "text.alignleft",
                             "text.viewfinder",
                             "timer",
                             "trash",
                             "tray.full",
                             "xmark.circle.fill"})
        EXPECT_TRUE(SystemSymbol::exists(QLatin1String(name))) << name;
}
