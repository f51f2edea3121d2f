#include "tests/support/allocation_fault.h"

#include <cstdlib>
#include <new>

namespace QZ
{
namespace TEST
{

namespace
{

thread_local int allocations_left = 0; // 0: none fails

void* allocate_or_null(std::size_t size) noexcept
{
    if (allocations_left > 0 && --allocations_left == 0)
        return nullptr;
    return std::malloc(size ? size : 1);
}

void* allocate(std::size_t size)
{
    if (void* memory = allocate_or_null(size))
        return memory;
    throw std::bad_alloc();
}

} // namespace

Allocation_fault::Allocation_fault(int nth)
{
    allocations_left = nth;
}

Allocation_fault::~Allocation_fault()
{
    allocations_left = 0;
}

bool Allocation_fault::happened() const
{
    return allocations_left == 0;
}

} // namespace TEST
} // namespace QZ

void* operator new(std::size_t size)
{
    return QZ::TEST::allocate(size);
}

void* operator new[](std::size_t size)
{
    return QZ::TEST::allocate(size);
}

// The forms that throw nothing are replaced too: what one allocates, the operators below release.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return QZ::TEST::allocate_or_null(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return QZ::TEST::allocate_or_null(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
