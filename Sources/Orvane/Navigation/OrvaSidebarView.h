// The list of a sidebar: moving in it chooses.
#pragma once

#include "Orvane/Navigation/OrvaNavigation.h"
#include "Orvane/Navigation/OrvaSidebarModel.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QListView>

namespace orvane {

class OrvaSidebarView final : public OrvaControl<QListView> {
public:
    explicit OrvaSidebarView(const OrvaSidebar& sidebar);

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    void themeChanged() override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                                       const QEvent* event) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void choose(const QModelIndex& index);
    void showSelection();

    OrvaSidebarModel m_model;
    Binding<QString> m_selection;
    bool m_showing = false;
    Cancellables m_cancellables;
};

} // namespace orvane
