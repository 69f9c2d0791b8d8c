// Shows a menu as a popup of the program, for status areas that can't draw one. Never waits for it to close.
// Main thread.
#pragma once

#include "Platform/Menu.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QTimer>

#include <optional>

class QAction;
class QKeyEvent;
class QMenu;

namespace orvane {

class TrayMenuView : public QObject {
    Q_OBJECT
public:
    explicit TrayMenuView(QObject* parent = nullptr);
    ~TrayMenuView() override;

    /// Opens the menu beside the item, or at the pointer if the item's place isn't known. Replaces an open
    /// menu.
    void popUp(const Menu& menu, std::optional<QRect> item);
    void close();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void fill(QMenu& popup, const Menu& menu, int depth);
    QAction* addItem(QMenu& popup, const MenuItem& item, int depth);
    void holdPointer();
    void letPointerGo();
    bool chooseByKey(const QMenu& popup, const QKeyEvent& key);

    QPointer<QMenu> m_popup;
    QTimer m_grabAgain;
    bool m_failedToHold = false;
};

} // namespace orvane
