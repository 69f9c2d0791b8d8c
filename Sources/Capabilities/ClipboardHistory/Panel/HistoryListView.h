// The list of the history's panel: rows that are pressed like buttons. Only those in view are measured and
// painted, so ten thousand cost no more than ten. Main thread.
#pragma once

#include "Capabilities/ClipboardHistory/Panel/HistoryRow.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryRowHeights.h"
#include "Capabilities/ClipboardHistory/Panel/HistoryThumbnails.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QAbstractScrollArea>
#include <QHash>
#include <QPointer>

class QMenu;

namespace orvane {

class HistoryListView final : public OrvaThemed<QAbstractScrollArea> {
public:
    explicit HistoryListView(HistoryViewModel& model);
    ~HistoryListView() override;

    /// Keeps the view's place, and the focus on the entry that has it.
    void setItems(const QList<ClipItem>& items);
    [[nodiscard]] const QList<ClipItem>& items() const { return m_items; }

    /// Prepares a new showing: the first row on top, no row with the focus, pictures read anew.
    void startAnew();
    void closeMenu();

    [[nodiscard]] int rowCount() const { return static_cast<int>(m_items.size()); }
    /// Returns the row's place in the viewport, whether it is in view or not. Far from the view it is a
    /// guess.
    [[nodiscard]] QRect rowRect(int row) const;
    /// Returns -1 where there is no row.
    [[nodiscard]] int rowAt(const QPoint& viewportPoint) const;
    /// Returns what is shown of an entry.
    [[nodiscard]] const HistoryRow& row(int row) const;
    [[nodiscard]] int focusedRow() const { return hasFocus() ? m_current : -1; }

    void press(int row);
    void openMenu(int row, const QPoint& globalPoint);
    /// Gives the row the keyboard and brings it into view.
    void focusRow(int row);

    /// Called for keys typed while a row has the focus.
    std::function<void(QKeyEvent*)> onTyping;

protected:
    void themeChanged() override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void showEvent(QShowEvent* event) override;

private:
    void estimate();
    void settle();
    bool measureInView();
    void fetchThumbnails();
    [[nodiscard]] int firstInView() const { return rowAtContent(verticalScrollBarValue()); }
    [[nodiscard]] int rowAtContent(int y) const { return m_heights.rowAt(y); }
    [[nodiscard]] int verticalScrollBarValue() const;
    void hover(int row);
    void paintRow(QPainter& painter, int each) const;
    void moveFocus(int row);
    void keepInView(int row);
    [[nodiscard]] HistoryRowLook::Icon icon(int row) const;

    HistoryViewModel& m_model;
    QList<ClipItem> m_items;
    HistoryRowLook m_look;
    HistoryRowHeights m_heights;
    mutable QHash<int, HistoryRow> m_rows; // of the rows in view and a few more
    HistoryThumbnails m_thumbnails;
    QPointer<QMenu> m_menu;
    int m_hovered = -1;
    int m_pressed = -1;
    int m_current = -1; // the row that has the focus when the list has it
    bool m_isSettling = false;
};

} // namespace orvane
