#pragma once

#include <mutex>

#include "zav/export.h"

/// The lock under which the library writes its diagnostic lines.
namespace LogUtil {

/// Process-wide, non-recursive. Each line of the library is written to standard output whole, from
/// its prefix to the flush, while this mutex is held; it is never held across a database call.
///
/// An application that writes to `std::cout` itself may hold it around its own lines, so that they
/// never interleave with the library's. It must not call into the library while holding it.
extern ZAV_EXPORT std::mutex logMutex;

}  // namespace LogUtil
