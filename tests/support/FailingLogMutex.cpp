#include "support/FailingLogMutex.h"

#include <pthread.h>

#include "zav/LogUtil.h"

FailingLogMutex::FailingLogMutex()
{
    pthread_mutex_t* const mutex = LogUtil::logMutex.native_handle();
    pthread_mutexattr_t errorChecking;
    pthread_mutexattr_init(&errorChecking);
    pthread_mutexattr_settype(&errorChecking, PTHREAD_MUTEX_ERRORCHECK);
    pthread_mutex_destroy(mutex);
    pthread_mutex_init(mutex, &errorChecking);
    pthread_mutexattr_destroy(&errorChecking);
    pthread_mutex_lock(mutex);
}

FailingLogMutex::~FailingLogMutex()
{
    pthread_mutex_t* const mutex = LogUtil::logMutex.native_handle();
    pthread_mutex_unlock(mutex);
    pthread_mutex_destroy(mutex);
    pthread_mutex_init(mutex, nullptr);
}
