// The panel in which a person chooses one of the installed programs. Main thread.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace orvane::OrvaAppChooser {

/// Shows the panel above the active window and returns at once. `accepted` is called with the identifier of
/// the chosen program; not at all when the panel is dismissed or the program has none. A second call while
/// the panel is open brings it to the front. Programs whose identifiers are in `present` are shown as chosen
/// already.
void run(std::function<void(const QString& bundleID)> accepted, const QStringList& present = {});

} // namespace orvane::OrvaAppChooser
