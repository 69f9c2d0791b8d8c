// The programs that come with this one and run beside it. Any thread.
#pragma once

#include <QByteArray>

namespace orvane {

/// Returns the path of a helper's executable, which is beside the program or where an installation has it.
/// Empty when it is in neither place.
[[nodiscard]] QByteArray helperProgram(const char* name);

} // namespace orvane
