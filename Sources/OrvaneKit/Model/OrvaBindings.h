// Connects live values to the code that shows and sets them. Main thread.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

#include <QPointer>
#include <QScopedValueRollback>

#include <functional>
#include <utility>

namespace orvane {

/// Shows the present value at once and each new one, while `subscriptions` lives.
template <class T, class Show>
void follow(Cancellables& subscriptions, const Live<T>& value, Show show)
{
    show(value.get());
    for (Subscription& subscription : value.onChange([value, show] { show(value.get()); }))
        subscriptions.push_back(std::move(subscription));
}

/// A binding in the form that one control needs. The control shows every value that the binding takes, and
/// after each set the value that the binding then has, so a refused value goes back.
template <class T>
class OrvaBoundValue {
public:
    explicit OrvaBoundValue(Binding<T> binding) : m_binding(std::move(binding)) {}

    /// Shows the present value at once. Called once, by the control that this is a part of.
    void follow(QObject& control, std::function<void(const T&)> show)
    {
        m_control = &control;
        m_show = std::move(show);
        orvane::follow(m_cancellables, static_cast<const Live<T>&>(m_binding),
                       [this](const T&) { this->show(); });
    }

    [[nodiscard]] T get() const { return m_binding.get(); }

    /// Returns false when the set has ended the control, and this with it.
    bool set(T value)
    {
        const QPointer<QObject> alive(m_control);
        const Binding<T> binding = m_binding;
        binding.set(std::move(value));
        if (alive)
            show();
        return !alive.isNull();
    }

    void show()
    {
        const QScopedValueRollback showing(m_isShowing, true);
        m_show(m_binding.get());
    }

    /// True while it shows a value: changes of the control aren't the user's then.
    [[nodiscard]] bool isShowing() const { return m_isShowing; }

private:
    Binding<T> m_binding;
    QObject* m_control = nullptr;
    std::function<void(const T&)> m_show;
    bool m_isShowing = false;
    Cancellables m_cancellables;
};

} // namespace orvane
