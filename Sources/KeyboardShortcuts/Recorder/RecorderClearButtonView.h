// The small cross in a recorder that clears its shortcut.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QAbstractButton>

namespace orvane::KeyboardShortcuts {

/// Acts when the mouse button goes down, since a recorder that records swallows its going up. Never takes the
/// focus, which is the recorder's.
class RecorderClearButton final : public OrvaThemed<QAbstractButton> {
public:
    /// The side of the square that takes clicks, in points.
    static constexpr int side = 22;

    explicit RecorderClearButton(QWidget* recorder);

    [[nodiscard]] QSize sizeHint() const override { return QSize(side, side); }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvane::KeyboardShortcuts
