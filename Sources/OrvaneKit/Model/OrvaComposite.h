// Composite components: they are described by other components, once for reading the tree and for rendering
// it.
//
// A composite has `AnyView body() const`, and `children()` returns what `body()` returns.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

#include <concepts>

namespace orvane {

template <class Component>
concept OrvaComposite = requires(const Component& component)
{
    {
        component.body()
        } -> std::same_as<AnyView>;
};

template <OrvaComposite Component>
QWidget* makeOrvaWidget(const Component& composite)
{
    return composite.body().makeWidget();
}

} // namespace orvane
