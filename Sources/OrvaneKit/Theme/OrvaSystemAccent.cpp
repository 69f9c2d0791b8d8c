#include "OrvaneKit/Theme/OrvaSystemAccent.h"

#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

namespace orvane {

QColor orvaSystemAccent()
{
    const auto highlight = [](const QPalette& palette) { return palette.color(QPalette::Highlight); };
    const QColor told = highlight(QGuiApplication::palette());
    // The highlight of a palette that nobody has set is that of the style.
    return told == highlight(QApplication::style()->standardPalette()) ? orvaColor(OrvaColor::accent) : told;
}

} // namespace orvane
