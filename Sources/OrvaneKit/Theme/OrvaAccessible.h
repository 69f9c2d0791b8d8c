// Gives a kind of view an interface for assistive technology. Main thread.
#pragma once

#include <QAccessible>

namespace orvane {

/// After the first call an `Interface` describes each `View`; it is made from a pointer to the view.
template <class View, class Interface>
void describeWith()
{
    static const bool installed =
        (QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
             auto* view = dynamic_cast<View*>(object);
             return view ? new Interface(view) : nullptr;
         }),
         true);
    Q_UNUSED(installed)
}

} // namespace orvane
