#include "support/failing_allocator.h"

#include <cstdlib>
#include <new>

namespace geometry::test
{
namespace
{

constexpr long unlimited = -1;
thread_local long allocationsLeft = unlimited;

} // namespace

CAllocationLimit::CAllocationLimit(long allowed)
{
    allocationsLeft = allowed;
}

CAllocationLimit::~CAllocationLimit()
{
    allocationsLeft = unlimited;
}

void* Allocate(std::size_t size)
{
    if (allocationsLeft == 0)
    {
        throw std::bad_alloc();
    }
    if (allocationsLeft > 0)
    {
        --allocationsLeft;
    }
    void* const memory = std::malloc(size != 0 ? size : 1);
    if (memory == nullptr)
    {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace geometry::test

void* operator new(std::size_t size)
{
    return geometry::test::Allocate(size);
}

void* operator new[](std::size_t size)
{
    return geometry::test::Allocate(size);
}

void* operator new(std::size_t size, std::nothrow_t const &) noexcept
{
    try
    {
        return geometry::test::Allocate(size);
    }
    catch (std::bad_alloc const &)
    {
        return nullptr;
    }
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
