// A switch that shows and sets a value.
#pragma once

#include "OrvaneKit/Model/OrvaBindings.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QCheckBox>
#include <QVariantAnimation>

namespace orvane {

/// For assistive technology it is a check box, like its base class.
class OrvaSwitchView final : public OrvaControl<QCheckBox> {
public:
    OrvaSwitchView(Binding<bool> isOn, const Live<QString>& name,
                   const std::optional<Live<QString>>& description = {}, const Live<bool>& enabled = true);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void nextCheckState() override { m_isOn.set(!isChecked()); }
    void paintEvent(QPaintEvent* event) override;

private:
    void shownChanged(bool on);
    void moveKnob(bool on);

    OrvaBoundValue<bool> m_isOn;
    double m_knob = 0; // 0 is off, 1 on
    QVariantAnimation m_motion;
    Cancellables m_cancellables;
};

} // namespace orvane
