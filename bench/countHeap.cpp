// Linked into a program, counts the bytes that are allocated at a time, by SQLite and by C++ alike,
// and at its end prints the peak above what was allocated when main() began.

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-*)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-*)

namespace {

std::atomic<long> g_allocated;
long g_peak = 0;  // the programs have one thread

void* added(void* block)
{
    g_allocated += static_cast<long>(malloc_usable_size(block));
    g_peak = std::max(g_peak, g_allocated.load());
    return block;
}

void* removed(void* block)
{
    g_allocated -= static_cast<long>(malloc_usable_size(block));
    return block;
}

struct Report {
    long atStart = g_allocated;

    Report() { g_peak = g_allocated; }
    ~Report() { std::printf("%ld\n", g_peak - atStart); }
} const REPORT;

}  // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

void* malloc(std::size_t size)
{
    return added(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size)
{
    return added(__libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size)
{
    return added(__libc_realloc(removed(block), size));
}

void free(void* block)
{
    __libc_free(removed(block));
}
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
