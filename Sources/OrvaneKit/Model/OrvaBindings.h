// Ties live values to what shows them.
#pragma once

#include "OrvaneCore/Base/OrvaView.h"

#include <utility>

namespace orvane {

/// Shows the present value at once and each new one, for as long as `subscriptions` lives.
template <class T, class Show>
void follow(Cancellables& subscriptions, const Live<T>& value, Show show)
{
    show(value.get());
    for (Subscription& subscription : value.onChange([value, show] { show(value.get()); }))
        subscriptions.push_back(std::move(subscription));
}

} // namespace orvane
