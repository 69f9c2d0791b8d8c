// A pop-up picker: the present choice, and a menu of all of them.
#pragma once

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Model/OrvaRows.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QComboBox>
#include <QPointer>

class QMenu;

namespace orvane {

class OrvaPickerView final : public OrvaControl<QComboBox> {
    Q_OBJECT

public:
    OrvaPickerView(Binding<QString> selection, const Live<QList<OrvaPickerOption>>& options,
                   const QString& name);
    ~OrvaPickerView() override;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    void showPopup() override;
    void hidePopup() override;

protected:
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void showOptions(const QList<OrvaPickerOption>& options);
    void showSelection(const QString& tag);
    void choose(int index);

    OrvaBoundValue<QString> m_selection;
    QPointer<QMenu> m_menu;
    Cancellables m_cancellables;
};

} // namespace orvane
