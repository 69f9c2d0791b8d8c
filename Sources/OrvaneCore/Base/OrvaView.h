// A view as a value: a tree of components that says what is shown and which values it is bound to.
//
// A tree can be read and driven without a display; rendering one gives a widget that follows its observables.
// Main thread.
#pragma once

#include "OrvaneCore/Base/Observable.h"

#include <QList>

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>

class QWidget;

namespace orvane {

/// A shown value that may change: it is read anew whenever one of its sources announces a change.
template <class T>
class Live {
public:
    using Sources = std::vector<std::shared_ptr<ObservableObject>>;

    Live(T constant) : m_get([constant] { return constant; }) {}
    // The requirement leaves copies and moves to their own constructors.
    // NOLINTBEGIN(bugprone-forwarding-reference-overload)
    template <class U>
    requires(std::is_convertible_v<U, T> && !std::is_same_v<std::remove_cvref_t<U>, T> &&
             !std::is_same_v<std::remove_cvref_t<U>, Live>) Live(U&& constant)
        : Live(T(std::forward<U>(constant)))
    {
    }
    // NOLINTEND(bugprone-forwarding-reference-overload)
    /// Keeps its sources alive.
    Live(std::function<T()> get, Sources sources) : m_get(std::move(get)), m_sources(std::move(sources)) {}

    [[nodiscard]] T get() const { return m_get(); }
    [[nodiscard]] const Sources& sources() const { return m_sources; }

    [[nodiscard]] Cancellables onChange(const std::function<void()>& handler) const
    {
        Cancellables subscriptions;
        for (const auto& source : m_sources)
            subscriptions.push_back(source->onChange(handler));
        return subscriptions;
    }

private:
    std::function<T()> m_get;
    Sources m_sources;
};

/// A value that a control shows and sets.
template <class T>
class Binding : public Live<T> {
public:
    Binding(std::function<T()> get, std::function<void(T)> set, typename Live<T>::Sources sources)
        : Live<T>(std::move(get), std::move(sources)), m_set(std::move(set))
    {
    }

    void set(T value) const { m_set(std::move(value)); }

private:
    std::function<void(T)> m_set;
};

/// Binds to an observable member of an object, which the binding keeps alive:
/// `bind(settings, &LampSettings::glow)`.
template <class Owner, class Property>
auto bind(std::shared_ptr<Owner> owner, Property Owner::*member)
{
    using T = std::remove_cvref_t<decltype(((*owner).*member).get())>;
    std::shared_ptr<Property> property(owner, &((*owner).*member));
    return Binding<T>([property] { return property->get(); },
                      [property](T value) { property->set(std::move(value)); }, {property});
}

class AnyView;

/// A part of a view. Every component is a plain struct; `AnyView` wraps it.
class ViewNode {
public:
    virtual ~ViewNode() = default;
    [[nodiscard]] virtual QList<AnyView> children() const = 0;
    /// Makes a new widget without parent, bound for its life. Needs a GUI application.
    [[nodiscard]] virtual QWidget* makeWidget() const = 0;
};

/// A type-erased view. Cheap to copy; a default one shows nothing.
class AnyView {
public:
    AnyView() = default;
    template <class Component>
    requires(!std::is_same_v<std::remove_cvref_t<Component>, AnyView>) AnyView(Component component);

    explicit operator bool() const { return m_node != nullptr; }

    /// The component inside, if it is one of this type.
    template <class Component>
    [[nodiscard]] const Component* as() const;

    [[nodiscard]] QList<AnyView> children() const { return m_node ? m_node->children() : QList<AnyView>{}; }
    [[nodiscard]] QWidget* makeWidget() const { return m_node ? m_node->makeWidget() : nullptr; }

    /// Returns every component of this type in the tree, this view included, in the order in which they are
    /// shown.
    template <class Component>
    [[nodiscard]] QList<std::shared_ptr<const Component>> all() const;

private:
    std::shared_ptr<const ViewNode> m_node;
};

namespace detail {

template <class Component>
class ComponentNode final : public ViewNode {
public:
    explicit ComponentNode(Component component) : m_component(std::move(component)) {}

    [[nodiscard]] const Component& component() const { return m_component; }
    [[nodiscard]] QList<AnyView> children() const override
    {
        if constexpr (requires { m_component.children(); })
            return m_component.children();
        else
            return {};
    }
    /// The overload for the component is found beside it: `QWidget* makeOrvaWidget(const Component&)`.
    [[nodiscard]] QWidget* makeWidget() const override { return makeOrvaWidget(m_component); }

private:
    Component m_component;
};

} // namespace detail

template <class Component>
requires(!std::is_same_v<std::remove_cvref_t<Component>, AnyView>) AnyView::AnyView(Component component)
    : m_node(std::make_shared<detail::ComponentNode<Component>>(std::move(component)))
{
}

template <class Component>
const Component* AnyView::as() const
{
    const auto* node = dynamic_cast<const detail::ComponentNode<Component>*>(m_node.get());
    return node ? &node->component() : nullptr;
}

template <class Component>
QList<std::shared_ptr<const Component>> AnyView::all() const
{
    QList<std::shared_ptr<const Component>> found;
    if (const auto* own = as<Component>())
        found.append(std::shared_ptr<const Component>(m_node, own));
    for (const AnyView& child : children())
        found.append(child.all<Component>());
    return found;
}

} // namespace orvane
