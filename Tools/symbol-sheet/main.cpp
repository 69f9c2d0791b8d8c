// Draws every system symbol at the sizes that it is used in, light and dark: symbol-sheet FILE.png
#include "OrvaneKit/Theme/OrvaSymbol.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <array>
#include <cstdio>

namespace {

using namespace orvane;

constexpr std::array sizes{16, 18, 22, 24, 52};
constexpr int rowHeight = 64;
constexpr int sizesWidth = 212;
constexpr int nameWidth = 230;
constexpr int perColumn = 22;

QStringList symbolNames()
{
    QStringList names;
    for (const QString& file :
         QDir(QStringLiteral(":/symbols")).entryList({QStringLiteral("*.svg")}, QDir::Files))
        names.append(file.chopped(4));
    return names;
}

void drawSizes(QPainter& painter, const QString& name, QPoint corner, OrvaScheme scheme)
{
    const QRect ground(corner, QSize(sizesWidth, rowHeight));
    painter.fillRect(ground, orvaColor(OrvaColor::window, scheme));
    int x = ground.left() + 10;
    for (const int side : sizes) {
        paintOrvaSymbol(painter, name, QRectF(x, ground.center().y() - side / 2, side, side),
                        orvaColor(OrvaColor::primary, scheme));
        x += side + 14;
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: symbol-sheet FILE.png\n", stderr);
        return 2;
    }
    // The contents of the sheet don't depend on a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (!SystemSymbol::exists(QStringLiteral("eye"))) {
        std::fputs("symbol-sheet: the symbols are missing from this build\n", stderr);
        return 1;
    }

    const QStringList names = symbolNames();
    const int columns = (static_cast<int>(names.size()) + perColumn - 1) / perColumn;
    QImage sheet(columns * (nameWidth + 2 * sizesWidth), perColumn * rowHeight, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    for (int index = 0; index < names.size(); ++index) {
        const QString& name = names.at(index);
        const QPoint corner(index / perColumn * (nameWidth + 2 * sizesWidth), index % perColumn * rowHeight);
        painter.setPen(Qt::black);
        painter.drawText(QRect(corner + QPoint(10, 0), QSize(nameWidth - 10, rowHeight)),
                         Qt::AlignVCenter | Qt::AlignLeft, name);
        drawSizes(painter, name, corner + QPoint(nameWidth, 0), OrvaScheme::light);
        drawSizes(painter, name, corner + QPoint(nameWidth + sizesWidth, 0), OrvaScheme::dark);
    }
    painter.end();
    if (!sheet.save(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "symbol-sheet: can't write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
