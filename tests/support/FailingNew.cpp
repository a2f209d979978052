#include "support/FailingNew.h"

#include <cstdlib>

namespace {

thread_local long g_allocationsUntilFailure = 0;  // 0: none fails

bool failsNow()
{
    return g_allocationsUntilFailure > 0 && --g_allocationsUntilFailure == 0;
}

}  // namespace

FailingNew::FailingNew(long which)
{
    g_allocationsUntilFailure = which;
}

FailingNew::~FailingNew()
{
    g_allocationsUntilFailure = 0;
}

bool FailingNew::hasFailed() const
{
    return g_allocationsUntilFailure == 0;
}

void* operator new(std::size_t size)
{
    void* const memory = failsNow() ? nullptr : std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}
