#include "zav/LogUtil.h"

namespace LogUtil {

std::mutex logMutex;

}  // namespace LogUtil
