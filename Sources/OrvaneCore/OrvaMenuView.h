// The menu that a picker opens, in the kit's look.
#pragma once

#include "OrvaneCore/OrvaThemed.h"

#include <QMenu>

namespace orvane {

class OrvaMenuView final : public OrvaThemed<QMenu> {
public:
    explicit OrvaMenuView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintItem(QPainter& painter, const QAction& action, const QRectF& rect, bool current) const;
};

} // namespace orvane
