#include "stackLeft.h"

#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr std::size_t USUAL_STACK = 48UL * 1024;

}  // namespace

std::size_t stackLeft()
{
    void* lowest = nullptr;
    std::size_t size = 0;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        pthread_attr_getstack(&attributes, &lowest, &size);
        pthread_attr_destroy(&attributes);
    }
    const char* const here = static_cast<const char*>(__builtin_frame_address(0));
    const char* const end = static_cast<const char*>(lowest);
    const bool isOnIt = here > end && here <= end + size;
    return isOnIt ? static_cast<std::size_t>(here - end) : USUAL_STACK;
}

bool hasUsualStack()
{
    const bool isMainThread = syscall(SYS_gettid) == getpid();
    return isMainThread || stackLeft() >= USUAL_STACK;
}
