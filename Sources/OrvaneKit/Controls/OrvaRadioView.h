// A group of radio buttons: a few choices, all of them visible.
#pragma once

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Model/OrvaControls.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QRadioButton>
#include <QWidget>

class QVBoxLayout;

namespace orvane {

/// Never checks itself: it tells its group the user's choice.
class OrvaRadioView final : public OrvaControl<QRadioButton> {
    Q_OBJECT

public:
    enum class Wish { chosen, before, after };

    OrvaRadioView(QString title, std::function<void(Wish)> wished);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void nextCheckState() override;
    void keyPressEvent(QKeyEvent* event) override;
    void themeChanged() override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int textHeight(int width) const;
    void paintMark(QPainter& painter, const QRectF& circle) const;

    QString m_title;
    std::function<void(Wish)> m_wished;
};

/// Tab enters the group once, at the chosen button; arrow keys choose. The checked button always follows the
/// binding.
class OrvaRadioGroupView final : public OrvaThemed<QWidget> {
    Q_OBJECT

public:
    explicit OrvaRadioGroupView(const OrvaRadioGroup& group);

private:
    void showOptions(const QList<OrvaPickerOption>& options);
    void showSelection();
    void addButton(const OrvaPickerOption& option);
    /// Returns false when the choice has ended this view.
    bool choose(int index);
    void choosePast(int index, int step);
    [[nodiscard]] int chosenIndex() const;

    OrvaBoundValue<QString> m_selection;
    QList<OrvaPickerOption> m_options;
    QList<OrvaRadioView*> m_buttons;
    QVBoxLayout* m_lines;
    Cancellables m_cancellables;
};

} // namespace orvane
