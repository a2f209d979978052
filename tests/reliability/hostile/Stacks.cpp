#include "Stacks.h"

#include <pthread.h>
#include <sys/mman.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#if defined(__SANITIZE_ADDRESS__)
#define UNCHECKED __attribute__((no_sanitize_address))
#else
#define UNCHECKED
#endif

namespace {

constexpr unsigned char PAINT = 0xA5;

constexpr std::size_t MAIN_PAINTED = 6UL * 1024 * 1024;  ///< of the usual 8 MiB
constexpr std::size_t FRAME = 4096;                      ///< what the painter itself stands on

constexpr std::size_t GUARD = 256UL * 1024;  ///< more than any frame that could jump over it

using Byte = volatile unsigned char;

UNCHECKED void paint(Byte* from, const Byte* to)
{
    for (Byte* at = from; at != to; ++at) {
        *at = PAINT;
    }
}

UNCHECKED std::size_t usedOf(const Byte* from, const Byte* to)
{
    while (from != to && *from == PAINT) {
        ++from;
    }
    return static_cast<std::size_t>(to - from);
}

void* runFunction(void* function)
{
    (*static_cast<const std::function<void()>*>(function))();
    return nullptr;
}

}  // namespace

std::size_t runOnMainStack(const std::function<void()>& run)
{
    Byte* const here = static_cast<unsigned char*>(__builtin_frame_address(0));
    Byte* const top = here - FRAME;
    Byte* const bottom = top - MAIN_PAINTED;
    paint(bottom, top);
    run();
    return usedOf(bottom, top) + FRAME;
}

std::size_t runOnThread(std::size_t stackSize, const std::function<void()>& run)
{
    void* const mapped = mmap(nullptr, GUARD + stackSize, PROT_NONE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    unsigned char* const stack = static_cast<unsigned char*>(mapped) + GUARD;
    if (mapped == MAP_FAILED || mprotect(stack, stackSize, PROT_READ | PROT_WRITE) != 0) {
        throw std::runtime_error("no memory for a stack");
    }
    paint(stack, stack + stackSize);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_t thread = {};
    std::function<void()> function = run;
    if (pthread_attr_setstack(&attributes, stack, stackSize) != 0 ||
        pthread_create(&thread, &attributes, runFunction, &function) != 0) {
        throw std::runtime_error("no thread on so small a stack");
    }
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    const std::size_t used = usedOf(stack, stack + stackSize);
    munmap(mapped, GUARD + stackSize);
    return used;
}
