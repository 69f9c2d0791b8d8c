// Stacks of the view kit that follow children which are shown and hidden by a condition.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"
#include "OrvaneKit/Theme/OrvaThemed.h"

#include <QWidget>

class QVBoxLayout;

namespace orvane {

/// Returns true for a widget that was hidden on purpose, false for one that just isn't shown yet.
bool isLeftOut(const QWidget& widget);
/// Hides or shows a part of a view. Never makes a window of one that has no parent yet.
void setLeftOut(QWidget& widget, bool leftOut);

/// The line between two parts of a view.
class OrvaDividerView final : public OrvaThemed<QWidget> {
public:
    /// Between two rows it begins where their labels do.
    enum class Reach { insetToLabels, edgeToEdge };

    explicit OrvaDividerView(Reach reach, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_inset;
};

/// A vertical stack of views that is told when one of them is left out or comes back.
class OrvaGroupView : public OrvaThemed<QWidget> {
public:
    explicit OrvaGroupView(int spacing = 0);

    /// Adds the view's widget; does nothing for an empty view.
    QWidget* add(const AnyView& view);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    /// By default a group that shows nothing is left out itself.
    virtual void childrenChanged();
    virtual void insert(QWidget& child);
    [[nodiscard]] bool showsAny() const;
    QVBoxLayout& stack() { return *m_stack; }
    [[nodiscard]] const QList<QWidget*>& members() const { return m_members; }

private:
    QVBoxLayout* m_stack;
    QList<QWidget*> m_members;
};

class OrvaDividedStackView final : public OrvaGroupView {
public:
    explicit OrvaDividedStackView(const QList<AnyView>& content);

protected:
    void childrenChanged() override;
    void insert(QWidget& child) override;

private:
    QList<OrvaDividerView*> m_dividers; // each above the member of the same index; none above the first
};

/// The rounded ground of rows.
class OrvaCardView final : public OrvaGroupView {
public:
    explicit OrvaCardView(const AnyView& content);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// Content that a condition leaves out.
class OrvaIfView final : public OrvaGroupView {
public:
    OrvaIfView(const Live<bool>& condition, const AnyView& content);

protected:
    void childrenChanged() override;

private:
    bool m_holds = false;
    Cancellables m_cancellables;
};

} // namespace orvane
