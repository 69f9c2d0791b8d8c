// A panel at a view, inside the same window, which keeps the keyboard.
#pragma once

#include "Orvane/Shortcuts/ShortcutViews.h"
#include "OrvaneKit/Theme/OrvaSoftShadow.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QPainterPath>
#include <QPointer>
#include <QWidget>

namespace orvane {

/// The open panel. Tab goes round in it, and it is one of the stops itself.
class OrvaPopoverPanelView final : public OrvaThemed<QWidget> {
public:
    OrvaPopoverPanelView(const OrvaPopover& popover, QWidget& anchor);
    ~OrvaPopoverPanelView() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool focusNextPrevChild(bool next) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    enum class Side { below, above };

    void place();
    void close();
    void focusChanged(QWidget* now);
    [[nodiscard]] bool holds(const QWidget& widget) const;
    [[nodiscard]] QRectF body() const;
    [[nodiscard]] QPainterPath outline() const;

    Binding<bool> m_isPresented;
    QPointer<QWidget> m_anchor;
    QPointer<QWidget> m_lastStop; // the stop from which Tab goes on
    Side m_side = Side::below;
    double m_tip = 0; // x of the arrow's tip in this widget
    OrvaSoftShadow m_shadow;
};

/// Shows the anchor, and opens and closes the panel.
class OrvaPopoverAnchorView final : public QWidget {
public:
    explicit OrvaPopoverAnchorView(const OrvaPopover& popover);
    ~OrvaPopoverAnchorView() override;

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void show(bool presented);
    void open();
    void closePanel();
    void takeFocusBack();

    OrvaPopover m_popover;
    QPointer<OrvaPopoverPanelView> m_panel;
    Cancellables m_cancellables;
};

} // namespace orvane
