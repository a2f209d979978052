#pragma once

#include "zav/DescriptionDb.h"

/// The service as a new process finds it, however the process used it before: a new instance, with
/// nothing open and at the initial levels. The state before is put back when it goes.
class FreshService {
public:
    FreshService();
    ~FreshService();
    FreshService(const FreshService&) = delete;
    FreshService& operator=(const FreshService&) = delete;

    DescriptionDb* operator->() const { return DescriptionDb::getInstance(); }

private:
    DescriptionDb* m_previousInstance;
};
