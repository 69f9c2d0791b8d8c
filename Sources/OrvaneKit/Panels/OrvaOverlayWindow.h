// A window of the program above everything else, over one display or several. Main thread.
#pragma once

#include "Platform/Geometry.h"
#include "Platform/Overlays.h"

#include <QPointer>
#include <QWidget>

namespace orvane {

class OrvaOverlayWindow : public QWidget {
public:
    explicit OrvaOverlayWindow(Overlays::Input input);

    /// The content fills the window. Takes ownership and deletes the former content.
    void setContentView(QWidget* content);
    /// A rectangle in the space of the screens.
    void setFrame(const Rect& frame);
    /// Shows it; the program with the keyboard keeps it.
    void orderFront();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    Overlays::Input m_input;
    QPointer<QWidget> m_content;
};

} // namespace orvane
