// Fuzzers end the process where a promise doesn't hold.
#pragma once

#include <cstdlib>

namespace orvane::fuzz {

inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace orvane::fuzz
