#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include <array>

namespace orvane {

namespace {

struct Token {
    OrvaColor color;
    QColor light;
    QColor dark;
};

// Text has a contrast of at least 4.5 on every ground that it is used on, its own colour at 0.16 included.
const auto& tokens()
{
    static const std::array table{
        Token{OrvaColor::window, QColor(0xf4, 0xf4, 0xf6), QColor(0x1c, 0x1c, 0x1f)},
        Token{OrvaColor::sidebar, QColor(0xea, 0xea, 0xee), QColor(0x23, 0x23, 0x27)},
        Token{OrvaColor::cardFill, QColor(0xff, 0xff, 0xff), QColor(0x28, 0x28, 0x2c)},
        Token{OrvaColor::cardStroke, QColor(0x1d, 0x1d, 0x1f, 18), QColor(0xf2, 0xf2, 0xf4, 18)},
        Token{OrvaColor::divider, QColor(0x1d, 0x1d, 0x1f, 28), QColor(0xf2, 0xf2, 0xf4, 30)},
        Token{OrvaColor::primary, QColor(0x1d, 0x1d, 0x1f), QColor(0xf2, 0xf2, 0xf4)},
        Token{OrvaColor::secondary, QColor(0x5b, 0x5b, 0x62), QColor(0xae, 0xae, 0xb6)},
        Token{OrvaColor::accent, QColor(0x1f, 0x6b, 0xe0), QColor(0x2f, 0x6d, 0xe8)},
        Token{OrvaColor::link, QColor(0x1a, 0x62, 0xd6), QColor(0x73, 0xa8, 0xff)},
        Token{OrvaColor::green, QColor(0x14, 0x6a, 0x34), QColor(0x3f, 0xce, 0x70)},
        Token{OrvaColor::orange, QColor(0x96, 0x49, 0x00), QColor(0xff, 0xa2, 0x3d)},
        Token{OrvaColor::red, QColor(0xb3, 0x24, 0x1d), QColor(0xff, 0x80, 0x78)},
        Token{OrvaColor::onAccent, QColor(0xff, 0xff, 0xff), QColor(0xff, 0xff, 0xff)},
        Token{OrvaColor::controlFill, QColor(0xff, 0xff, 0xff), QColor(0x3a, 0x3a, 0x40)},
        Token{OrvaColor::controlStroke, QColor(0x1d, 0x1d, 0x1f, 52), QColor(0xf2, 0xf2, 0xf4, 40)},
        Token{OrvaColor::controlTrack, QColor(0x8c, 0x8c, 0x94), QColor(0x7c, 0x7c, 0x85)},
        Token{OrvaColor::knob, QColor(0xff, 0xff, 0xff), QColor(0xff, 0xff, 0xff)},
    };
    return table;
}

struct FontToken {
    double scale;
    QFont::Weight weight;
};

FontToken fontToken(OrvaFont role)
{
    switch (role) {
    case OrvaFont::title:
        return {1.55, QFont::Bold};
    case OrvaFont::headline:
        return {1.0, QFont::DemiBold};
    case OrvaFont::body:
        return {1.0, QFont::Normal};
    case OrvaFont::callout:
        return {0.95, QFont::Normal};
    case OrvaFont::caption:
        return {0.88, QFont::Normal};
    case OrvaFont::captionMedium:
        return {0.88, QFont::Medium};
    case OrvaFont::smallCaption:
        return {0.84, QFont::Normal};
    case OrvaFont::smallCaptionSemibold:
        return {0.84, QFont::DemiBold};
    }
    Q_UNREACHABLE();
}

} // namespace

OrvaScheme orvaScheme()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness()
               ? OrvaScheme::dark
               : OrvaScheme::light;
}

QColor orvaColor(OrvaColor color, OrvaScheme scheme)
{
    for (const Token& token : tokens()) {
        if (token.color == color)
            return scheme == OrvaScheme::dark ? token.dark : token.light;
    }
    Q_UNREACHABLE();
}

QColor orvaColor(OrvaColor color)
{
    return orvaColor(color, orvaScheme());
}

QColor orvaLightColor(OrvaColor color, OrvaScheme scheme)
{
    if (scheme == OrvaScheme::light) {
        switch (color) {
        case OrvaColor::green:
            return QColor(0x1c, 0x8a, 0x45);
        case OrvaColor::orange:
            return QColor(0xb8, 0x5c, 0x00);
        case OrvaColor::red:
            return QColor(0xd0, 0x34, 0x2c);
        default:
            break;
        }
    }
    return orvaColor(color, scheme);
}

QColor faded(QColor color, double opacity)
{
    color.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return color;
}

QFont orvaFont(OrvaFont role)
{
    const FontToken token = fontToken(role);
    QFont font = QApplication::font();
    if (font.pixelSize() > 0)
        font.setPixelSize(qMax(1, qRound(font.pixelSize() * token.scale)));
    else
        font.setPointSizeF(font.pointSizeF() * token.scale);
    font.setWeight(token.weight);
    return font;
}

bool orvaAnimates()
{
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
}

} // namespace orvane
