// What the leak sanitizer doesn't look at while it exists: libraries of others leave rows behind when their
// work is cut off in the middle. Nothing without that sanitizer.
#pragma once

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace orvane::tests {

class LeaksOfOthers {
public:
#ifdef __SANITIZE_ADDRESS__
    LeaksOfOthers()
    {
        __lsan_disable();
    }
    ~LeaksOfOthers()
    {
        __lsan_enable();
    }
#else
    LeaksOfOthers() {} // NOLINT(modernize-use-equals-default): so that it counts as used
#endif
    LeaksOfOthers(const LeaksOfOthers&) = delete;
    LeaksOfOthers& operator=(const LeaksOfOthers&) = delete;
};

} // namespace orvane::tests
