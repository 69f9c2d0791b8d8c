// The text of a shortcut as it is drawn. Few fonts can enclose a character in a keycap, so the keycap is
// drawn around it.
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace orvane::KeyboardShortcuts {

class RecorderText {
public:
    RecorderText(const QString& text, const QFont& font);

    /// In points.
    [[nodiscard]] double width() const;
    /// One line in the painter's pen, in the middle of `box` as far as `room` allows, which is a part of it.
    /// Text that finds no room is cut off at the end.
    void paint(QPainter& painter, const QRectF& box, const QRectF& room) const;

private:
    [[nodiscard]] double keycapWidth() const;
    void paintKeycap(QPainter& painter, const QRectF& keycap) const;

    QString m_plain;
    QString m_enclosed; // the character in the keycap, empty without one
    QFont m_font;
};

} // namespace orvane::KeyboardShortcuts
