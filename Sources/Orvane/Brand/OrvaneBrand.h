// The product's appearance: its colour, its word, its mark and its addresses on the web.
//
// This is the product's configuration; nothing else in the program names an address. Main thread.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Model/OrvaLayout.h"

#include <QColor>
#include <QMarginsF>
#include <QRectF>
#include <QString>

class QPainter;

namespace orvane {

namespace OrvaneBrand {

/// The blue of the icon, which is a picture; opaque; red 0.22, green 0.51, blue 1. All else is in the kit's
/// blue.
inline const QColor accent = QColor::fromRgbF(0.22f, 0.51f, 1.0f);

/// The product's word, in the two parts that look different in the wordmark.
inline const QString wordHead = QStringLiteral("Or");
inline const QString wordTail = QStringLiteral("vane");
QString tagline();

/// The site's name as it is shown.
inline const QString siteName = QStringLiteral("orvane.example");
inline const QString websiteURL = QStringLiteral("https://orvane.example/");
inline const QString privacyURL = QStringLiteral("https://orvane.example/privacy");
inline const QString supportURL = QStringLiteral("https://orvane.example/support");

struct WordmarkColors {
    QColor head;
    /// Returns the kit's blue for text, on a ground on which the head can be read.
    [[nodiscard]] QColor tail() const;
};

/// Returns the size that the word takes; `size` is that of its type, in points.
QSizeF wordmarkSize(double size, const QString& lead = {});
/// Paints the word on the leading side of `box`, in its vertical middle.
void paintWordmark(QPainter& painter, const QRectF& box, double size, const WordmarkColors& colors,
                   const QString& lead = {});

/// Shares of the badge's side: its corner radius, and the square in which the mark's cells lie.
inline constexpr double badgeCorner = 0.24;
inline constexpr double markShare = 0.56;
/// Paints a rounded square with the mark of four cells, filling `box`.
void paintAppIconBadge(QPainter& painter, const QRectF& box);

/// Makes a text that opens a web address.
OrvaTextButton link(const QString& title, const QString& url);

} // namespace OrvaneBrand

/// The product's word in type of `size` points, and the text before it in the same line.
struct OrvaneWordmark {
    double size;
    QString lead = {};
};

enum class BadgeShadow { none, soft };

/// The program's icon, with sides of `size` points. A shadow takes room beyond them.
struct AppIconBadge {
    double size;
    BadgeShadow shadow = BadgeShadow::none;
};

QWidget* makeOrvaWidget(const OrvaneWordmark& wordmark);
QWidget* makeOrvaWidget(const AppIconBadge& badge);

} // namespace orvane
