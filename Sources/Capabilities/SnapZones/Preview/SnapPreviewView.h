// The place that a window is about to take: a tinted pane with a border, or the border alone where windows
// can't be transparent.
#pragma once

#include "OrvaneKit/Panels/OrvaPanelWindow.h"

namespace orvane {

class SnapPreviewView final : public OrvaThemed<QWidget> {
public:
    static constexpr double corner = 10; // in points
    static constexpr double borderWidth = 2;

    /// The view becomes the content of `panel` and cuts it to shape.
    explicit SnapPreviewView(OrvaPanelWindow& panel);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void cutPanel();

    OrvaPanelWindow& m_panel;
    Subscription m_translucency;
};

} // namespace orvane
