#include "zav/LogUtil.h"

#include "logLine.h"

namespace LogUtil {

std::mutex logMutex;

void beginLine(const char* severity, const char* component, const char* function)
{
    std::cout.width(0);  // one that the application has set was meant for a text of its own
    std::cout << severity << component << "::" << function << "() ";
}

}  // namespace LogUtil
