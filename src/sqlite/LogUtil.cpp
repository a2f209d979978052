#include "zav/LogUtil.h"

#include <iostream>

#include "logLine.h"

namespace LogUtil {

std::mutex logMutex;

std::ostream& beginLine(const char* severity, const char* component, const char* function)
{
    std::cout.width(0);  // one that the application has set was meant for a text of its own
    return std::cout << severity << component << "::" << function << "() ";
}

}  // namespace LogUtil
