// The base of the view kit's widgets. They follow the desktop's colours and font while they are shown, and
// controls show their focus ring to people who use the keyboard. Painting that several of them share is here
// too.
#pragma once

#include "OrvaneKit/Theme/OrvaTheme.h"

#include <QEvent>
#include <QFocusEvent>
#include <QPainter>
#include <QWidget>

namespace orvane {

/// The space around a control for its focus ring, in points.
inline constexpr int orvaRingMargin = 3;

/// The opacity of a control that is disabled by itself, and not with its page.
inline constexpr double orvaDisabledOpacity = 0.45;

template <class Base>
class OrvaThemed : public Base {
public:
    using Base::Base;

protected:
    /// Colours are read at painting; values derived from them or from the font are renewed here.
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

    /// A page that is disabled as a whole is dimmed as a whole: its parts must not be dimmed a second time.
    [[nodiscard]] double ownOpacity() const
    {
        return this->testAttribute(Qt::WA_ForceDisabled) ? orvaDisabledOpacity : 1.0;
    }
};

/// Draws a ring around a control of the given shape, inside `orvaRingMargin`.
void paintOrvaFocusRing(QPainter& painter, const QRectF& shape, double corner);

/// Paints a thin line from one point to the other, one pixel of the screen at any scale.
void paintOrvaDivider(QPainter& painter, const QPointF& from, const QPointF& to);

/// Paints one line of text in the painter's font and pen, at the leading edge and in the vertical middle of
/// `room`. Text that doesn't fit is shortened as `mode` says.
void paintOrvaElidedText(QPainter& painter, const QRectF& room, Qt::LayoutDirection direction,
                         const QString& text, Qt::TextElideMode mode = Qt::ElideRight);

/// Sets the colours of a field whose ground is painted by the view behind it.
void setOrvaFieldColors(QWidget& field);
/// Sets the colour with which a scrolling view is filled.
void setOrvaGround(QWidget& view, OrvaColor color);

/// Doubles a text's ampersands for widgets that would take them as marks of shortcuts.
[[nodiscard]] QString escapedMnemonics(QString text);

/// The box of a button, picker or stepper.
void paintOrvaControlBox(QPainter& painter, const QRectF& shape, double corner, bool pressed);
/// The box of the button that Return presses.
void paintOrvaDefaultBox(QPainter& painter, const QRectF& shape, double corner, bool pressed);

/// Knows if a control was last used with the keyboard. The ring goes on with the focus then.
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
    /// True while the pointer is on a control that can be used.
    [[nodiscard]] bool isHovered() const { return this->underMouse() && this->isEnabled(); }
    /// Returns the rectangle of the control itself, without the ring's margin.
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
        default: // a window that comes to the front doesn't show how it is used
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
