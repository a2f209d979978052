#pragma once

#include <streambuf>
#include <string>

/// @return whether no thread holds LogUtil::logMutex, the calling one included.
bool isLogLockFree();

/// A stream buffer that sees for each access whether the log lock is held.
class LockProbe : public std::streambuf {
public:
    int withLock() const { return m_withLock; }
    int withoutLock() const { return m_withoutLock; }
    int flushes() const { return m_flushes; }

    /// @return all that has been written and flushed so far.
    const std::string& flushedText() const { return m_flushedText; }

protected:
    std::streamsize xsputn(const char* piece, std::streamsize length) override;
    int_type overflow(int_type character) override;
    int sync() override;

private:
    void probe();

    int m_withLock = 0;
    int m_withoutLock = 0;
    int m_flushes = 0;
    std::string m_text;
    std::string m_flushedText;
};
