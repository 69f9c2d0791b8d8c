// The 32-bit numbers of a property: windows, atoms, cardinals.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

namespace orvane {

/// `bytes` may be null when there are none; bytes beyond whole numbers are ignored.
inline std::vector<std::uint32_t> propertyNumbers(const void* bytes, std::size_t size)
{
    std::vector<std::uint32_t> numbers(size / sizeof(std::uint32_t));
    if (!numbers.empty())
        std::memcpy(numbers.data(), bytes, numbers.size() * sizeof(std::uint32_t));
    return numbers;
}

} // namespace orvane
