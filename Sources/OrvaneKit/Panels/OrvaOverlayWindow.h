// A window of the program above everything else, over one display or several. Main thread.
#pragma once

#include "OrvaneCore/Base/Observable.h"
#include "Platform/Geometry.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Overlays.h"

#include <QPointer>
#include <QWidget>

namespace orvane {

class OrvaOverlayWindow : public QWidget {
public:
    /// With `clear`, what the content doesn't paint shows what is below; without a compositor the window has
    /// to be masked instead, or that is black.
    enum class Ground { painted, clear };

    explicit OrvaOverlayWindow(Overlays::Input input, Ground ground = Ground::painted);
    ~OrvaOverlayWindow() override;

    /// The content fills the window. Takes ownership and deletes the former content.
    void setContentView(QWidget* content);
    /// A rectangle in the space of the screens.
    void setFrame(const Rect& frame);
    /// Shows it; the program with the keyboard keeps it.
    void orderFront();

    /// True while a compositor runs.
    Observable<bool>& translucency() { return m_translucency; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    Overlays::Input m_input;
    QPointer<QWidget> m_content;
    Observable<bool> m_translucency;
    std::unique_ptr<NotificationCenter::Token> m_compositingChanges;
};

} // namespace orvane
