// The first run as a widget: the stage on which its pages follow each other, and the footer.
#pragma once

#include "Orvane/Onboarding/OnboardingFlow.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QPixmap>
#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

class QPushButton;

namespace orvane {

/// The direction in which the next page comes in.
enum class StageMove { none, onward, backward };

/// Shows one page at a time. While one follows another, pictures of both move over the new one, which works
/// from the first moment.
class OnboardingStageView final : public QWidget {
public:
    OnboardingStageView();

    /// Takes ownership of the page and deletes the one before.
    void show(QWidget* page, StageMove move);
    [[nodiscard]] QWidget* page() const { return m_page; }
    [[nodiscard]] bool isMoving() const { return m_motion.state() == QAbstractAnimation::Running; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    class Curtain;

    [[nodiscard]] QPixmap picture(QWidget& page) const;
    void endTransition();

    QPointer<QWidget> m_page;
    Curtain* m_curtain;
    QVariantAnimation m_motion;
};

/// Return presses the forward button, wherever the focus is: once for each press, however long it is held.
class OnboardingFlowView final : public OrvaThemed<QWidget> {
public:
    explicit OnboardingFlowView(OnboardingFlow flow);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeFooter();
    void showStep(OnboardingFlow::Step step);
    void orderTabs();

    OnboardingFlow m_flow;
    OnboardingStageView* m_stage;
    QPushButton* m_back = nullptr;
    QPushButton* m_forward = nullptr;
    OnboardingFlow::Step m_shown = OnboardingFlow::Step::welcome;
    Cancellables m_cancellables;
};

} // namespace orvane
