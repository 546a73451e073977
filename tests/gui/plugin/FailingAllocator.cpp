#include "FailingAllocator.h"

#include <cstdlib>
#include <new>

int g_failAt = 0;

// Only the plug-in's builders ask in this form; everything else is untouched.
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    if (g_failAt > 0 && --g_failAt == 0)
        return nullptr;
    return std::malloc(size);
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, const std::nothrow_t &) noexcept
{
    std::free(memory);
}

void *operator new(std::size_t size)
{
    if (void *const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
