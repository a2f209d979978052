#include "zav/LogUtil.h"

#include <iostream>

#include "logLine.h"

namespace LogUtil {

std::mutex logMutex;

namespace {

std::ostream& beginLine(const char* severity, const char* component, const char* function)
{
    std::cout.width(0);  // one that the application has set was meant for a text of its own
    return std::cout << severity << component << "::" << function << "() ";
}

}  // namespace

// std::endl is called rather than written, which would import a further function.
void writeLine(const char* severity, const char* component, const char* function,
               const std::string& message)
{
    const std::lock_guard<std::mutex> lock(logMutex);
    std::endl(beginLine(severity, component, function) << message);
}

void writeLine(const char* severity, const char* component, const char* function,
               const char* message, const char* second, const char* third, const char* last)
{
    const std::lock_guard<std::mutex> lock(logMutex);
    std::endl(beginLine(severity, component, function) << message << second << third << last);
}

}  // namespace LogUtil
