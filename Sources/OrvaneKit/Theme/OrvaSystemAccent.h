// The accent colour of the desktop, for what lies over the desktop itself. Controls on grounds of ours have
// `OrvaColor::accent`. Main thread.
#pragma once

#include <QColor>

namespace orvane {

/// Returns the highlight of the application's palette, where the desktop's accent stands; ours where nobody
/// tells one.
[[nodiscard]] QColor orvaSystemAccent();

} // namespace orvane
