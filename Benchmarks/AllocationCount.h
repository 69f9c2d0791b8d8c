// Counts the allocations of a benchmark. It replaces the process's operator new, so it has to be included
// once in a program.
#pragma once

#include <atomic>
#include <cstdlib>
#include <new>

// NOLINTBEGIN(misc-definitions-in-headers): a program includes it in one source file only.
namespace {

std::atomic<long> allocations{0};

} // namespace

void* operator new(std::size_t size)
{
    allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
// NOLINTEND(misc-definitions-in-headers)
