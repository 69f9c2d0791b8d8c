// A floating panel of the program: on all desktops, above everything, and without taking the keyboard from
// the program that the user works with. Main thread.
//
// Where a compositor runs it is translucent, with round corners and a shadow outside its frame; elsewhere it
// is an opaque rectangle with a border. It changes while it is shown when a compositor starts or ends.
#pragma once

#include "OrvaneCore/Base/Observable.h"
#include "OrvaneKit/Theme/OrvaSoftShadow.h"
#include "OrvaneKit/Theme/OrvaThemed.h"
#include "Platform/Geometry.h"
#include "Platform/NotificationCenter.h"

#include <QPointer>
#include <QWidget>

#include <functional>

namespace orvane {

class OrvaPanelWindow : public OrvaThemed<QWidget> {
public:
    enum class Keyboard { never, onRequest };
    enum class Mouse { taken, passesThrough };
    /// The paint behind the content. With `clear` there is none, and without a compositor the content has
    /// to paint all of its rectangle or to mask it.
    enum class Ground { material, clear };
    enum class Shadow { cast, none };

    struct Style {
        Keyboard keyboard = Keyboard::never;
        Mouse mouse = Mouse::taken;
        Ground ground = Ground::material;
        Shadow shadow = Shadow::cast;
        double corner = 12; // points
    };

    explicit OrvaPanelWindow(Style style);
    ~OrvaPanelWindow() override;

    /// The content fills the frame. Takes ownership and deletes the former content.
    void setContentView(QWidget* content);

    /// A rectangle in the space of the screens; the shadow lies outside of it.
    void setFrame(const Rect& frame);
    [[nodiscard]] const Rect& frame() const { return m_frame; }

    /// Shows it above all other windows; the program with the keyboard keeps it.
    void orderFront();
    void orderOut();
    /// True between orderFront() and orderOut().
    [[nodiscard]] bool isVisible() const { return m_isOrderedIn; }

    /// True while a compositor runs.
    [[nodiscard]] const Observable<bool>& translucency() const { return m_translucency; }
    Observable<bool>& translucency() { return m_translucency; }

    /// Called when the desktop asks the panel to close, for example at Alt+F4. Without it the panel stays.
    std::function<void()> onCloseRequest;

protected:
    /// Returns the frame in the coordinates of this widget.
    [[nodiscard]] QRectF body() const;
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void hideOrderedOut();
    [[nodiscard]] QMargins shadowMargins() const;
    void place();
    void placeContent();
    void applyMargins();

    Style m_style;
    bool m_isOrderedIn = false;
    Rect m_frame;
    OrvaSoftShadow m_shadow;
    QPointer<QWidget> m_content;
    Observable<bool> m_translucency;
    std::unique_ptr<NotificationCenter::Token> m_compositing;
};

/// A panel that can take the keyboard, for a field to type in.
class KeyablePanel : public OrvaPanelWindow {
public:
    KeyablePanel() : KeyablePanel(Style{}) {}
    explicit KeyablePanel(Style style);

    void makeKeyAndOrderFront();
};

} // namespace orvane
