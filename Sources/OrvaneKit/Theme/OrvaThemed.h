// What every widget of the view kit shares: it follows the desktop's colours and font while it is shown, and
// a control shows its focus ring to those who use the keyboard.
#pragma once

#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QEvent>
#include <QFocusEvent>
#include <QPainter>

namespace orvane {

/// Space around a control for its focus ring, in points.
inline constexpr int orvaRingMargin = 3;

/// Opacity of a control that is disabled by itself, and not with the page around it.
inline constexpr double orvaDisabledOpacity = 0.45;

template <class Base>
class OrvaThemed : public Base {
public:
    using Base::Base;

protected:
    /// Colours are read when painting; what is kept of them or of the font is renewed here.
    virtual void themeChanged() {}

    bool event(QEvent* event) override
    {
        const bool handled = Base::event(event);
        switch (event->type()) {
        case QEvent::PaletteChange:
        case QEvent::ApplicationPaletteChange:
        case QEvent::ApplicationFontChange:
            themeChanged();
            this->update();
            break;
        default:
            break;
        }
        return handled;
    }

    /// A page that is disabled as a whole is dimmed as a whole: its parts must not fade a second time.
    [[nodiscard]] double ownOpacity() const
    {
        return this->testAttribute(Qt::WA_ForceDisabled) ? orvaDisabledOpacity : 1.0;
    }
};

/// Draws a ring around a control of the given shape, inside `orvaRingMargin`.
void paintOrvaFocusRing(QPainter& painter, const QRectF& shape, double corner);

/// The box of a button, picker or stepper.
void paintOrvaControlBox(QPainter& painter, const QRectF& shape, double corner, bool pressed);
/// The box of the button that Return presses.
void paintOrvaDefaultBox(QPainter& painter, const QRectF& shape, double corner, bool pressed);

/// Whether a control was last used with the keyboard: where its focus goes on to, so does the ring.
class OrvaKeyboardUse {
public:
    [[nodiscard]] bool isUsedByKeyboard() const { return m_keyboardFocus; }

protected:
    ~OrvaKeyboardUse() = default;
    bool m_keyboardFocus = false;
};

template <class Base>
class OrvaControl : public OrvaThemed<Base>, public OrvaKeyboardUse {
public:
    using OrvaThemed<Base>::OrvaThemed;

protected:
    [[nodiscard]] bool showsFocusRing() const { return m_keyboardFocus && this->hasFocus(); }
    /// Where the control itself is drawn, the ring's margin left out.
    [[nodiscard]] QRectF shape() const
    {
        constexpr double m = orvaRingMargin;
        return QRectF(this->rect()).adjusted(m, m, -m, -m);
    }

    void focusInEvent(QFocusEvent* event) override
    {
        switch (event->reason()) {
        case Qt::TabFocusReason:
        case Qt::BacktabFocusReason:
        case Qt::ShortcutFocusReason:
            m_keyboardFocus = true;
            break;
        case Qt::MouseFocusReason:
            m_keyboardFocus = false;
            break;
        default: // a window that comes to the front says nothing about how it is used
            break;
        }
        Base::focusInEvent(event);
        this->update();
    }

    void focusOutEvent(QFocusEvent* event) override
    {
        Base::focusOutEvent(event);
        this->update();
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        m_keyboardFocus = true;
        this->update();
        Base::keyPressEvent(event);
    }
};

} // namespace orvane
