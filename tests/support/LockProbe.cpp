#include "support/LockProbe.h"

#include <future>
#include <mutex>

#include "zav/LogUtil.h"

bool isLogLockFree()
{
    // On another thread: one that holds the lock must not try it.
    return std::async(std::launch::async,
                      [] {
                          const std::unique_lock<std::mutex> lock(LogUtil::logMutex,
                                                                  std::try_to_lock);
                          return lock.owns_lock();
                      })
        .get();
}

std::streamsize LockProbe::xsputn(const char* piece, std::streamsize length)
{
    probe();
    m_text.append(piece, static_cast<std::size_t>(length));
    return length;
}

LockProbe::int_type LockProbe::overflow(int_type character)
{
    const char piece = traits_type::to_char_type(character);
    xsputn(&piece, 1);
    return character;
}

int LockProbe::sync()
{
    probe();
    ++m_flushes;
    m_flushedText = m_text;
    return 0;
}

void LockProbe::probe()
{
    ++(isLogLockFree() ? m_withoutLock : m_withLock);
}
