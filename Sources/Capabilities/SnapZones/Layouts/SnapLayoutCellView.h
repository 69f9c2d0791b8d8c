// One layout to choose: its picture above its name.
#pragma once

#include "Capabilities/SnapZones/Geometry/SnapZone.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QPushButton>

namespace orvane {

class SnapLayoutCellView final : public OrvaControl<QPushButton> {
public:
    /// The size of what is drawn, in points, where the titles find room in it; the focus ring lies around it.
    static constexpr QSize box{70, 56};

    explicit SnapLayoutCellView(SnapZone zone);

    /// Returns the width that the title needs, with room at its sides, or that of the box.
    [[nodiscard]] int neededWidth() const;
    /// Sets the width of what is drawn.
    void setWidth(int width);

    [[nodiscard]] SnapZone zone() const { return m_zone; }
    [[nodiscard]] QSize sizeHint() const override
    {
        return QSize(m_width, box.height()) + QSize(2 * orvaRingMargin, 2 * orvaRingMargin);
    }

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;

private:
    SnapZone m_zone;
    int m_width = box.width();
};

} // namespace orvane
