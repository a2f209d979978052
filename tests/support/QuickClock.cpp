#include "support/QuickClock.h"

#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <cstdint>

namespace {

int g_speed = 1;

constexpr std::int64_t SECOND = 1000000000;

std::int64_t nanoseconds(clockid_t clock)
{
    struct timespec time = {};
    syscall(SYS_clock_gettime, clock, &time);
    return time.tv_sec * SECOND + time.tv_nsec;
}

template <class Time>
int tell(clockid_t clock, Time* time)
{
    const std::int64_t now = nanoseconds(clock) * (clock == CLOCK_REALTIME ? 1 : g_speed);
    time->tv_sec = static_cast<decltype(time->tv_sec)>(now / SECOND);
    time->tv_nsec = static_cast<decltype(time->tv_nsec)>(now % SECOND);
    return 0;
}

}  // namespace

QuickClock::QuickClock(int speed)
{
    g_speed = speed;
}

QuickClock::~QuickClock()
{
    g_speed = 1;
}

double processorSeconds()
{
    return static_cast<double>(nanoseconds(CLOCK_PROCESS_CPUTIME_ID)) / SECOND;
}

// Found before the C library's by all that is in the process.
// The header names its parameters with underscores, which are not for us.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int clock_gettime(clockid_t clock, struct timespec* time) noexcept
{
    return tell(clock, time);
}

#if !defined(__LP64__)
/// As a 32-bit library that is built for times past 2038 calls it.
struct LongTime {
    std::int64_t tv_sec;
    std::int32_t tv_nsec;
    std::int32_t unused;
};

extern "C" int __clock_gettime64(clockid_t clock, LongTime* time)
{
    return tell(clock, time);
}
#endif
