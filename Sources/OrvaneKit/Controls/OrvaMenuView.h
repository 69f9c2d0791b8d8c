// A menu in a window, such as a picker opens, in the kit's look.
#pragma once

#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QMenu>
#include <QSet>

namespace orvane {

class OrvaMenuView final : public OrvaThemed<QMenu> {
public:
    explicit OrvaMenuView(QWidget* parent = nullptr);

    /// For an entry that takes something away for good: it is shown in red.
    void setDestructive(const QAction& action) { m_destructive.insert(&action); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintItem(QPainter& painter, const QAction& action, const QRectF& rect, bool current) const;

    QSet<const QAction*> m_destructive;
};

} // namespace orvane
