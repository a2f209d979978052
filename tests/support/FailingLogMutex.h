#pragma once

/// While it lives, locking LogUtil::logMutex on this thread fails with std::system_error: in its
/// place stands an error-checking mutex that the thread holds already.
class FailingLogMutex {
public:
    FailingLogMutex();
    ~FailingLogMutex();
    FailingLogMutex(const FailingLogMutex&) = delete;
    FailingLogMutex& operator=(const FailingLogMutex&) = delete;
};
