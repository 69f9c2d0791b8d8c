// Gives a kind of view an interface for assistive technology. Main thread.
#pragma once

#include <QAccessible>

namespace orvane {

/// After the first call each `View` is described by an `Interface`, which is made from a pointer to it.
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
