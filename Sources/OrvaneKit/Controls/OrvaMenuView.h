// A menu in a window, such as a picker opens, with the kit's look.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QMenu>
#include <QSet>

namespace orvane {

class OrvaMenuView final : public OrvaThemed<QMenu> {
public:
    explicit OrvaMenuView(QWidget* parent = nullptr);

    /// Shows an entry in red, because it takes something away for good.
    void setDestructive(const QAction& action) { m_destructive.insert(&action); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintItem(QPainter& painter, const QAction& action, const QRectF& rect, bool current) const;

    QSet<const QAction*> m_destructive;
};

} // namespace orvane
