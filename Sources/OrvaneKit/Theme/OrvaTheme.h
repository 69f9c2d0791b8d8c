// The numbers, colours and type that all panes share. Main thread.
#pragma once

#include <QColor>
#include <QFont>

namespace orvane {

/// In points.
namespace Orva {
inline constexpr double pagePadding = 26;   // inner margin of a page
inline constexpr double pageWidth = 640;    // page content is limited to it
inline constexpr double sectionGap = 24;    // between sections
inline constexpr double cardCorner = 12;    // corner radius of a card
inline constexpr double rowH = 16;          // horizontal inset of a row
inline constexpr double rowV = 12;          // vertical inset of a row
inline constexpr double disabledDim = 0.38; // opacity of disabled page content
inline constexpr double bannerCorner = 10;  // corner radius of a status banner
} // namespace Orva

/// A colour by its role; the token table has its light and its dark value.
enum class OrvaColor {
    window,     // behind a page
    sidebar,    // behind the list of pages
    cardFill,   // the system's control background
    cardStroke, // the primary colour at opacity 0.07
    divider,
    primary,   // text
    secondary, // lesser text
    accent,
    link, // text that can be pressed
    green,
    orange,
    red,
    onAccent, // text and symbols on an accent fill
    controlFill,
    controlStroke,
    controlTrack, // a switch that is off, the empty part of a slider
    knob,
};

enum class OrvaScheme { light, dark };

/// Follows the application's palette while the program runs.
OrvaScheme orvaScheme();
QColor orvaColor(OrvaColor color, OrvaScheme scheme);
QColor orvaColor(OrvaColor color);
/// The colour for a light or a mark without text: livelier than that of text, with a contrast of 3 to every
/// ground.
QColor orvaLightColor(OrvaColor color, OrvaScheme scheme);
/// Returns `color` at an opacity of 0 to 1, multiplied by its own.
QColor faded(QColor color, double opacity);

/// Roles of text, all on one scale relative to the application's font.
enum class OrvaFont {
    title, // bold
    headline,
    body,
    callout,
    caption,
    captionMedium,
    smallCaption,
    smallCaptionSemibold,
};

QFont orvaFont(OrvaFont role);

/// The opacity of the primary colour on a chosen row of a sidebar, 0 to 1.
inline double orvaChosenOpacity(OrvaScheme scheme)
{
    return scheme == OrvaScheme::dark ? 0.13 : 0.1;
}

/// False when the desktop asks for still controls.
bool orvaAnimates();

} // namespace orvane
